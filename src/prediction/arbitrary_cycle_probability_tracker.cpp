#include "prediction/arbitrary_cycle_probability_tracker.h"

#include <algorithm>
#include <limits>
#include <new>
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

TrackerDataPtr NewTrackerData(const CycleShape& shape) {
  const int32_t slotCount = shape.SlotCount();
  TrackerDataPtr data(
      static_cast<TrackerData*>(std::malloc(static_cast<size_t>(TrackerDataSize(slotCount)))));
  if (!data) throw std::bad_alloc();
  *data = {};
  data->daysInCycle = shape.daysInCycle;
  data->minutesInDay = shape.minutesInDay;
  data->minutesPerSlot = shape.minutesPerSlot;
  data->lastState = ContainerStopped;
  data->lastTime.tm_year = kNone;
  data->slotCount = slotCount;
  std::fill_n(data->Slots(), slotCount, SlotRecord{kNone, kNone, kNone, kNone, kNone});
  return data;
}

TrackerDataPtr NewTrackerData(IConfigurations& configuration) {
  CycleShape shape;
  shape.daysInCycle = ReadPredictorNumber(configuration, "DaysInCycle", kNone);
  shape.minutesInDay = ReadPredictorNumber(configuration, "MinutesInDay", kNone);
  shape.minutesPerSlot = static_cast<int32_t>(configuration.GetTimeResolution());
  if (shape.daysInCycle == 0 || shape.minutesInDay == 0 || shape.minutesPerSlot <= 0) {
    throw FixedTextException(kWrongConfigurations);
  }
  if (shape.minutesInDay % shape.minutesPerSlot != 0) throw FixedTextException(kUnevenDay);
  if (!shape.IsUsable()) throw FixedTextException(kWrongConfigurations);
  return NewTrackerData(shape);
}

constexpr bool IsAsleepOrOff(int32_t state) { return state == Suspend || state == ShuttingDown; }

// The seconds that come back after a conversion to a broken-down time and from it.
constexpr int64_t Reconverted(int64_t seconds) {
  return seconds < 0 || seconds > kLastSecond ? kInvalidTime : seconds;
}

}  // namespace

ArbitraryCycleProbabilityTracker::ArbitraryCycleProbabilityTracker(IConfigurations* configuration)
    : configuration_(configuration) {
  ReloadWeights();
  ReloadStrengths();
  data_ = NewTrackerData(*configuration_);
  StartProbabilities();
}

ArbitraryCycleProbabilityTracker::ArbitraryCycleProbabilityTracker(IConfigurations* configuration,
                                                                   TrackerDataPtr data)
    : configuration_(configuration), data_(std::move(data)) {
  if (data_->version != 0) throw FixedTextException("Version 0 expected");
  ReloadWeights();
  ReloadStrengths();
  const CycleShape shape = ShapeOf(*data_);
  if (shape.daysInCycle == 0 || shape.minutesPerSlot == 0 || shape.minutesInDay == 0) {
    throw FixedTextException(kWrongDataFileFormat);
  }
  // In 64 bits, since the lowest number divided by -1 does not fit 32.
  if (int64_t{shape.minutesInDay} % shape.minutesPerSlot != 0) throw FixedTextException(kUnevenDay);
  if (!shape.IsUsable() || shape.SlotCount() != data_->slotCount) {
    throw FixedTextException(kWrongDataFileFormat);
  }
  StartProbabilities();
}

void ArbitraryCycleProbabilityTracker::ReloadParameters(std::string) {
  ReloadStrengths();
  // Before ReloadWeights throws because there are no weights any more.
  probabilities_.SetThresholds(strengthLow_, strengthHigh_);
  ReloadWeights();
  EstimateSlots(0, data_->slotCount - 1);
}

void ArbitraryCycleProbabilityTracker::ReloadWeights() {
  const int32_t firstLast = ReadPredictorNumber(*configuration_, "FirstLastWeight", kNone);
  const int32_t secondLast = ReadPredictorNumber(*configuration_, "SecondLastWeight", kNone);
  const int32_t agregation = ReadPredictorNumber(*configuration_, "AgregationWeight", kNone);
  const int32_t dayGrouping = ReadPredictorNumber(*configuration_, "DayGrouping", 0);
  if (firstLast == kNone || secondLast == kNone || agregation == kNone) {
    throw FixedTextException("No weigths specified");
  }
  const auto sum = static_cast<float>(Wrap32(int64_t{firstLast} + secondLast + agregation));
  weights_ = {static_cast<float>(firstLast) / sum, static_cast<float>(secondLast) / sum,
              static_cast<float>(agregation) / sum};
  dayGrouping_ = dayGrouping;
  dayGroups_ = DayGroups(dayGrouping);
}

void ArbitraryCycleProbabilityTracker::ReloadStrengths() {
  try {
    strengthHigh_ = ReadStrength("StrengthHigh");
    strengthLow_ = ReadStrength("StrengthLow");
  } catch (...) {
    // What was read before the missing value holds, and the rest stays as it was.
  }
}

float ArbitraryCycleProbabilityTracker::ReadStrength(const char* key) {
  const std::string value = configuration_->GetValue(kPredictorSection, key);
  if (value.empty()) throw FixedTextException("StrengthThreshold is not declared");
  return static_cast<float>(Atoi(value)) / 100.0F;
}

bool ArbitraryCycleProbabilityTracker::PoolsDays() const {
  constexpr int32_t kAllDays = 127;
  return dayGrouping_ != 0 && dayGrouping_ != kAllDays && data_->daysInCycle == kDaysInWeek &&
         int64_t{ShapeOf(*data_).SlotsPerDay()} * kDaysInWeek == data_->slotCount;
}

void ArbitraryCycleProbabilityTracker::SetObservations(int slot, const Observations& observations) {
  probabilities_.Set(slot, EstimateProbability(observations, weights_));
}

void ArbitraryCycleProbabilityTracker::EstimateSlots(int64_t first, int64_t last) {
  if (!PoolsDays()) {
    for (int64_t i = first; i <= last; ++i) {
      const auto slot = static_cast<int>(i % data_->slotCount);
      SetObservations(slot, ObservationsOf(data_->Slots()[slot]));
    }
    return;
  }
  // An observation counts on every day of its group, so all slots of its time of day change.
  const int slotsPerDay = ShapeOf(*data_).SlotsPerDay();
  last = std::min(last, first + slotsPerDay - 1);
  for (int64_t i = first; i <= last; ++i) {
    const auto timeOfDay = static_cast<int>(i % slotsPerDay);
    const auto pooled = dayGroups_.Pool(data_->Slots(), slotsPerDay, timeOfDay);
    for (int day = 0; day < kDaysInWeek; ++day) {
      SetObservations(timeOfDay + day * slotsPerDay, pooled[static_cast<size_t>(day)]);
    }
  }
}

void ArbitraryCycleProbabilityTracker::StartProbabilities() {
  probabilities_ = ProbabilityMap(data_->slotCount);
  probabilities_.SetThresholds(strengthLow_, strengthHigh_);
  EstimateSlots(0, data_->slotCount - 1);
}

float ArbitraryCycleProbabilityTracker::GetSlotProbability(int slot) {
  return slot >= 0 && slot < data_->slotCount ? probabilities_.Get(slot) : kUnknownProbability;
}

Observations ArbitraryCycleProbabilityTracker::SlotObservations(int slot) const {
  if (!PoolsDays()) return ObservationsOf(data_->Slots()[slot]);
  const int slotsPerDay = ShapeOf(*data_).SlotsPerDay();
  const auto pooled = dayGroups_.Pool(data_->Slots(), slotsPerDay, slot % slotsPerDay);
  return pooled[static_cast<size_t>(slot / slotsPerDay)];
}

void ArbitraryCycleProbabilityTracker::ProcessEvent(const TimeLineEvent& event) {
  if (event.state == ContainerStopped) {
    throw FixedTextException("ContainerStopped should not be passed to the ProbabilityTracker");
  }
  const int32_t previous = data_->lastState;
  if (previous != ContainerStopped && data_->lastTime.tm_year != kNone) {
    const bool sameStretch = (IsAsleepOrOff(previous) && IsAsleepOrOff(event.state)) ||
                             (previous == Activating && event.state == Activating);
    if (sameStretch) return;
    const int64_t start = SecondsFromTm(data_->lastTime);
    const int64_t end = SecondsFromTm(event.time);
    if (start == kInvalidTime || end == kInvalidTime) throw FixedTextException("wrong time ...");
    if (end <= start) throw FixedTextException("state start is later than state end");
    const bool inUse = previous == Activating;
    const auto range = inUse ? InUseSlots(start, end) : InactiveSlots(start, end);
    if (range) MarkSlots(*range, inUse, start);
  }
  data_->lastState = event.state;
  data_->lastTime = event.time;
}

// Only slots that lie wholly inside the stretch count as not in use.
std::optional<ArbitraryCycleProbabilityTracker::SlotRange>
ArbitraryCycleProbabilityTracker::InactiveSlots(int64_t start, int64_t end) const {
  const int32_t slotSeconds = ShapeOf(*data_).SecondsPerSlot();
  const int64_t first = start / slotSeconds + 1;
  const int64_t last = end / slotSeconds - 1;
  if (first > last) return std::nullopt;
  return SlotRange{first % data_->slotCount, last % data_->slotCount};
}

// Every slot that the stretch touches counts as in use, the first one only if it was not already
// marked so in this turn of the cycle.
std::optional<ArbitraryCycleProbabilityTracker::SlotRange>
ArbitraryCycleProbabilityTracker::InUseSlots(int64_t start, int64_t end) const {
  const int32_t slotSeconds = ShapeOf(*data_).SecondsPerSlot();
  SlotRange range = {SlotAt(start), SlotAt(end)};
  const int64_t stamp = data_->Slots()[range.first].inUseStamp;
  if (stamp != kNone && WrapSubtract64(start, stamp) < slotSeconds) {
    const int64_t following = start / slotSeconds + 1;
    if (following > end / slotSeconds) return std::nullopt;
    range.first = following % data_->slotCount;
  }
  return range;
}

void ArbitraryCycleProbabilityTracker::MarkSlots(const SlotRange& range, bool inUse,
                                                 int64_t start) {
  const int32_t slotSeconds = ShapeOf(*data_).SecondsPerSlot();
  const int64_t last = range.first > range.last ? range.last + data_->slotCount : range.last;
  for (int64_t i = range.first; i <= last; ++i) {
    SlotRecord& slot = data_->Slots()[i % data_->slotCount];
    if (slot.secondLast != kNone) {
      slot.sum =
          slot.count == kNone ? slot.secondLast : Wrap32(int64_t{slot.sum} + slot.secondLast);
      slot.count = slot.count == kNone ? 1 : Wrap32(int64_t{slot.count} + 1);
    }
    if (slot.last != kNone) slot.secondLast = slot.last;
    slot.last = inUse ? 1 : 0;
    if (inUse) slot.inUseStamp = start + Wrap32((i - range.first) * slotSeconds);
  }
  EstimateSlots(range.first, last);
}

int ArbitraryCycleProbabilityTracker::SlotAt(int64_t seconds) const {
  const CycleShape shape = ShapeOf(*data_);
  const auto secondOfCycle = static_cast<int32_t>(seconds % shape.SecondsPerCycle());
  const int slot = secondOfCycle / shape.SecondsPerSlot();
  // A cycle whose seconds wrap may count more slots than there are.
  return slot < data_->slotCount ? slot : slot % data_->slotCount;
}

int32_t ArbitraryCycleProbabilityTracker::MinutesToIdle(int64_t seconds) {
  idleRunLength_ = kIdleStretchMinutes / data_->minutesPerSlot;
  const int lastOfRun = probabilities_.FindIdleRun(SlotAt(seconds), idleRunLength_);
  if (lastOfRun == 0) return kNoPrediction;
  const int32_t slotSeconds = ShapeOf(*data_).SecondsPerSlot();
  const int32_t toFirstSlot = Wrap32(int64_t{lastOfRun - idleRunLength_ + 1} * slotSeconds);
  const auto intoSlot = static_cast<int32_t>(seconds % slotSeconds);
  return Wrap32(int64_t{toFirstSlot} - intoSlot + 59) / 60;
}

std::optional<PredictionRecord> ArbitraryCycleProbabilityTracker::NextUse(int64_t seconds) {
  const int steps = probabilities_.FindInUse(SlotAt(seconds));
  if (steps == 0) return std::nullopt;
  const int32_t slotSeconds = ShapeOf(*data_).SecondsPerSlot();
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
