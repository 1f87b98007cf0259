#include "prediction/arbitrary_cycle_probability_tracker.h"

#include <algorithm>
#include <utility>

#include "base/exception.h"
#include "base/numbers.h"

namespace dozewell {
namespace {

constexpr const char* kWrongConfigurations =
    "ArbitraryCycleProbabilityTracker - wrong configurations";
constexpr const char* kWrongDataFileFormat =
    "ArbitraryCycleProbabilityTracker - wrong data file format";
constexpr const char* kUnevenDay =
    "Length of day modulus number of minutes within a slot is not zero";

CycleShape ReadUsableShape(IConfigurations& configuration) {
  const CycleShape shape = ReadCycleShape(configuration);
  if (shape.daysInCycle == 0 || shape.minutesInDay == 0 || shape.minutesPerSlot <= 0) {
    throw FixedTextException(kWrongConfigurations);
  }
  if (shape.minutesInDay % shape.minutesPerSlot != 0) throw FixedTextException(kUnevenDay);
  if (!shape.IsUsable()) throw FixedTextException(kWrongConfigurations);
  return shape;
}

// The seconds after a conversion to a broken-down time and back.
constexpr int64_t Reconverted(int64_t seconds) {
  return seconds < 0 || seconds > kLastSecond ? kInvalidTime : seconds;
}

}  // namespace

ArbitraryCycleProbabilityTracker::ArbitraryCycleProbabilityTracker(IConfigurations* configuration)
    : configuration_(configuration) {
  ReloadWeights();
  ReloadStrengths();
  learner_.emplace(ReadUsableShape(*configuration_));
  StartProbabilities();
}

ArbitraryCycleProbabilityTracker::ArbitraryCycleProbabilityTracker(IConfigurations* configuration,
                                                                   TrackerDataPtr data)
    : configuration_(configuration) {
  if (data->version != 0) throw FixedTextException("Version 0 expected");
  ReloadWeights();
  ReloadStrengths();
  const CycleShape shape = ShapeOf(*data);
  if (shape.daysInCycle == 0 || shape.minutesPerSlot == 0 || shape.minutesInDay == 0) {
    throw FixedTextException(kWrongDataFileFormat);
  }
  // In 64 bits, since in 32 bits the lowest number cannot be divided by -1.
  if (int64_t{shape.minutesInDay} % shape.minutesPerSlot != 0) throw FixedTextException(kUnevenDay);
  if (!shape.IsUsable() || shape.SlotCount() != data->slotCount) {
    throw FixedTextException(kWrongDataFileFormat);
  }
  learner_.emplace(std::move(data));
  StartProbabilities();
}

void ArbitraryCycleProbabilityTracker::ReloadParameters(std::string) {
  ReloadStrengths();
  // Comes first, since ReloadWeights may throw.
  probabilities_.SetThresholds(strengthLow_, strengthHigh_);
  ReloadWeights();
  EstimateAllSlots();
}

void ArbitraryCycleProbabilityTracker::ReloadWeights() {
  const int32_t firstLast = ReadPredictorNumber(*configuration_, kFirstLastWeightName, kNone);
  const int32_t secondLast = ReadPredictorNumber(*configuration_, kSecondLastWeightName, kNone);
  const int32_t agregation = ReadPredictorNumber(*configuration_, kAgregationWeightName, kNone);
  const int32_t dayGrouping =
      ReadPredictorNumber(*configuration_, kDayGroupingName, kDefaultDayGrouping);
  if (firstLast == kNone || secondLast == kNone || agregation == kNone) {
    throw FixedTextException("No weigths specified");
  }
  weights_ = NormalisedWeights(firstLast, secondLast, agregation);
  dayGroups_ = DayGroups(dayGrouping);
}

void ArbitraryCycleProbabilityTracker::ReloadStrengths() {
  try {
    strengthHigh_ = ReadStrength(kStrengthHighName);
    strengthLow_ = ReadStrength(kStrengthLowName);
  } catch (...) {
    // A threshold that was read before the missing one counts; the others stay as they were.
  }
}

float ArbitraryCycleProbabilityTracker::ReadStrength(const char* key) {
  const std::string value = configuration_->GetValue(kPredictorSection, key);
  if (value.empty()) throw FixedTextException("StrengthThreshold is not declared");
  return ThresholdOf(Atoi(value));
}

void ArbitraryCycleProbabilityTracker::SetObservations(int slot, const Observations& observations) {
  probabilities_.Set(slot, EstimateProbability(observations, weights_));
}

void ArbitraryCycleProbabilityTracker::EstimateSlots(int64_t first, int64_t last) {
  if (!pool_) {
    for (int64_t i = first; i <= last; ++i) {
      const auto slot = static_cast<int>(i % Data().slotCount);
      SetObservations(slot, ObservationsOf(Data().Slots()[slot]));
    }
    return;
  }
  // An observation counts on all days of its group, so all slots of its time of day may change.
  const int slotsPerDay = ShapeOf(Data()).SlotsPerDay();
  last = std::min(last, first + slotsPerDay - 1);
  for (int64_t i = first; i <= last; ++i) {
    const auto timeOfDay = static_cast<int>(i % slotsPerDay);
    for (int day = 0; day < kDaysInWeek; ++day) {
      const int slot = timeOfDay + day * slotsPerDay;
      SetObservations(slot, pool_->At(Data().Slots() + slot, day));
    }
  }
}

void ArbitraryCycleProbabilityTracker::EstimateAllSlots() {
  const int slotsPerDay = ShapeOf(Data()).SlotsPerDay();
  const bool week =
      Data().daysInCycle == kDaysInWeek && int64_t{slotsPerDay} * kDaysInWeek == Data().slotCount;
  pool_.reset();
  if (week && dayGroups_.PoolDays()) pool_.emplace(dayGroups_, slotsPerDay);
  EstimateSlots(0, Data().slotCount - 1);
  isBehind_ = false;
}

void ArbitraryCycleProbabilityTracker::CatchUp() {
  if (isBehind_) EstimateAllSlots();
}

void ArbitraryCycleProbabilityTracker::StartProbabilities() {
  probabilities_ = ProbabilityMap(Data().slotCount);
  probabilities_.SetThresholds(strengthLow_, strengthHigh_);
  EstimateAllSlots();
}

float ArbitraryCycleProbabilityTracker::GetSlotProbability(int slot) {
  CatchUp();
  return slot >= 0 && slot < Data().slotCount ? probabilities_.Get(slot) : kUnknownProbability;
}

Observations ArbitraryCycleProbabilityTracker::SlotObservations(int slot) const {
  const SlotRecord* const record = Data().Slots() + slot;
  return pool_ ? pool_->At(record, slot / ShapeOf(Data()).SlotsPerDay()) : ObservationsOf(*record);
}

void ArbitraryCycleProbabilityTracker::ProcessEvent(const TimeLineEvent& event) {
  const auto learnt = learner_->ProcessEvent(event);
  if (!learnt) return;
  if (estimatesWhenAsked_) {
    isBehind_ = true;
  } else {
    EstimateSlots(learnt->first, learnt->last);
  }
}

int32_t ArbitraryCycleProbabilityTracker::MinutesToIdle(int64_t seconds) {
  CatchUp();
  idleRunLength_ = kIdleStretchMinutes / Data().minutesPerSlot;
  const int lastOfRun = probabilities_.FindIdleRun(learner_->SlotAt(seconds), idleRunLength_);
  if (lastOfRun == 0) return kNoPrediction;
  const int32_t slotSeconds = ShapeOf(Data()).SecondsPerSlot();
  const int32_t toFirstSlot = Wrap32(int64_t{lastOfRun - idleRunLength_ + 1} * slotSeconds);
  const auto intoSlot = static_cast<int32_t>(seconds % slotSeconds);
  return Wrap32(int64_t{toFirstSlot} - intoSlot + 59) / 60;
}

std::optional<PredictionRecord> ArbitraryCycleProbabilityTracker::NextUse(int64_t seconds) {
  CatchUp();
  const int steps = probabilities_.FindInUse(learner_->SlotAt(seconds));
  if (steps == 0) return std::nullopt;
  const int32_t slotSeconds = ShapeOf(Data()).SecondsPerSlot();
  const int64_t wake = seconds - seconds % slotSeconds + Wrap32(int64_t{steps} * slotSeconds);
  PredictionRecord record;
  TmFromSeconds(wake, record.time);
  record.minutes = MinutesToIdle(Reconverted(wake));
  return record;
}

std::vector<PredictionRecord> ArbitraryCycleProbabilityTracker::PredictHibernate(const tm& time) {
  return {{time, MinutesToIdle(SecondsFromTm(time))}};
}

std::vector<PredictionRecord> ArbitraryCycleProbabilityTracker::PredictWake(const tm& time) {
  const auto use = NextUse(SecondsFromTm(time));
  return use ? std::vector{*use} : std::vector<PredictionRecord>{};
}

std::vector<PredictionRecord> ArbitraryCycleProbabilityTracker::GetPredictions(const tm& time) {
  const int64_t seconds = SecondsFromTm(time);
  const int32_t minutes = MinutesToIdle(seconds);
  if (minutes == kNoPrediction) return {{time, minutes}};
  const int64_t idleStart = seconds + Wrap32(int64_t{minutes} * 60);
  const auto use = NextUse(Reconverted(idleStart));
  if (!use) return {{time, minutes}};
  return {{time, minutes}, *use};
}

}  // namespace dozewell
