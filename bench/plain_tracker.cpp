#include "plain_tracker.h"

#include <cstring>

#include "base/exception.h"

namespace dozewell {

PlainTracker::PlainTracker(IConfigurations& configuration) {
  ReadParameters(configuration);
  const CycleShape shape = {ReadPredictorNumber(configuration, "DaysInCycle", -1),
                            ReadPredictorNumber(configuration, "MinutesInDay", -1),
                            static_cast<int32_t>(configuration.GetTimeResolution())};
  const auto size = static_cast<size_t>(TrackerDataSize(shape.SlotCount()));
  data_.reset(static_cast<TrackerData*>(std::malloc(size)));
  std::memset(static_cast<void*>(data_.get()), 0xFF, size);
  std::memset(static_cast<void*>(data_.get()), 0, sizeof(TrackerData));
  data_->daysInCycle = shape.daysInCycle;
  data_->minutesInDay = shape.minutesInDay;
  data_->minutesPerSlot = shape.minutesPerSlot;
  data_->lastState = 4;
  data_->lastTime.tm_year = -1;
  data_->slotCount = shape.SlotCount();
}

PlainTracker::PlainTracker(IConfigurations& configuration, const TrackerData& data) {
  ReadParameters(configuration);
  const auto size = static_cast<size_t>(TrackerDataSize(data.slotCount));
  data_.reset(static_cast<TrackerData*>(std::malloc(size)));
  std::memcpy(static_cast<void*>(data_.get()), &data, size);
}

void PlainTracker::ReadParameters(IConfigurations& configuration) {
  const int32_t first = ReadPredictorNumber(configuration, "FirstLastWeight", -1);
  const int32_t second = ReadPredictorNumber(configuration, "SecondLastWeight", -1);
  const int32_t agregation = ReadPredictorNumber(configuration, "AgregationWeight", -1);
  const auto sum = static_cast<float>(first + second + agregation);
  weight1_ = static_cast<float>(first) / sum;
  weight2_ = static_cast<float>(second) / sum;
  weight3_ = static_cast<float>(agregation) / sum;
  strengthHigh_ =
      static_cast<float>(ReadPredictorNumber(configuration, "StrengthHigh", 0)) / 100.0F;
  strengthLow_ = static_cast<float>(ReadPredictorNumber(configuration, "StrengthLow", 0)) / 100.0F;
  dayGrouping_ = ReadPredictorNumber(configuration, "DayGrouping", 0);
  for (int i = 0; i < 7; ++i) flag_[i] = dayGrouping_ >> i & 1;
}

void PlainTracker::Update(SlotRecord& slot, int32_t observation) {
  if (slot.secondLast != -1) {
    if (slot.count == -1) {
      slot.count = 1;
      slot.sum = slot.secondLast;
    } else {
      slot.count += 1;
      slot.sum += slot.secondLast;
    }
  }
  if (slot.last != -1) slot.secondLast = slot.last;
  slot.last = observation;
}

void PlainTracker::ProcessEvent(const TimeLineEvent& event) {
  const int32_t previous = data_->lastState;
  if (previous == 4 || data_->lastTime.tm_year == -1) {
    data_->lastState = event.state;
    data_->lastTime = event.time;
    return;
  }
  if ((previous == 1 || previous == 2) && (event.state == 1 || event.state == 2)) return;
  if (previous == 0 && event.state == 0) return;
  const int64_t start = SecondsFromTm(data_->lastTime);
  const int64_t end = SecondsFromTm(event.time);
  if (start == -1 || end == -1) throw FixedTextException("wrong time ...");
  if (end <= start) throw FixedTextException("state start is later than state end");

  const int64_t slotSeconds = data_->minutesPerSlot * 60;
  const int64_t cycleSeconds = int64_t{data_->daysInCycle} * data_->minutesInDay * 60;
  const int64_t slotCount = data_->slotCount;
  bool marks = true;
  int64_t first = 0;
  int64_t last = 0;
  if (previous != 0) {
    first = start / slotSeconds + 1;
    last = end / slotSeconds - 1;
    if (first > last) marks = false;
    first %= slotCount;
    last %= slotCount;
  } else {
    first = start % cycleSeconds / slotSeconds;
    last = end % cycleSeconds / slotSeconds;
    const int64_t stamp = data_->Slots()[first].inUseStamp;
    if (stamp != -1 && start - stamp < slotSeconds) {
      const int64_t following = start / slotSeconds + 1;
      if (following > end / slotSeconds) marks = false;
      first = following % slotCount;
    }
  }
  if (marks) {
    if (first > last) last += slotCount;
    for (int64_t i = first; i <= last; ++i) {
      SlotRecord& slot = data_->Slots()[i % slotCount];
      Update(slot, previous == 0 ? 1 : 0);
      if (previous == 0) slot.inUseStamp = start + (i - first) * slotSeconds;
    }
  }
  data_->lastState = event.state;
  data_->lastTime = event.time;
}

float PlainTracker::GetSlotProbability(int slot) const {
  const SlotRecord& own = data_->Slots()[slot];
  int32_t count = own.count;
  int32_t sum = own.sum;
  int32_t secondLast = own.secondLast;
  int32_t last = own.last;
  if (dayGrouping_ != 0 && dayGrouping_ != 127 && data_->daysInCycle == 7) {
    const int32_t slotsPerDay = data_->minutesInDay / data_->minutesPerSlot;
    const int32_t group = flag_[slot / slotsPerDay];
    int32_t pooledCount = 0;
    int32_t pooledSum = 0;
    int32_t pooledLast = -1;
    int32_t pooledSecondLast = -1;
    int32_t k = slot;
    for (int day = 0; day < 7; ++day) {
      k -= slotsPerDay;
      if (k < 0) k += data_->slotCount;
      if (flag_[k / slotsPerDay] != group) continue;
      const SlotRecord& other = data_->Slots()[k];
      if (pooledLast == -1) {
        pooledLast = other.last;
      } else if (pooledSecondLast == -1) {
        pooledSecondLast = other.last;
      }
      pooledCount += other.count;
      pooledSum += other.sum;
    }
    if (pooledLast != -1) {
      count = pooledCount;
      sum = pooledSum;
      secondLast = pooledSecondLast == -1 ? own.last : pooledSecondLast;
      last = pooledLast;
    }
  }
  if (last == -1) return -1.0F;
  const auto x1 = static_cast<float>(last);
  if (secondLast == -1) return x1;
  const auto x2 = static_cast<float>(secondLast);
  if (sum == -1) return (x1 * weight1_ + x2 * weight2_) / (weight1_ + weight2_);
  return x1 * weight1_ + x2 * weight2_ +
         (static_cast<float>(sum) / static_cast<float>(count)) * weight3_;
}

std::vector<PredictionRecord> PlainTracker::PredictHibernate(const tm& time) const {
  const int32_t run = 30 / data_->minutesPerSlot;
  const int32_t slotSeconds = data_->minutesPerSlot * 60;
  const int64_t cycleSeconds = int64_t{data_->daysInCycle} * data_->minutesInDay * 60;
  const int64_t seconds = SecondsFromTm(time);
  const auto current = static_cast<int>(seconds % cycleSeconds / slotSeconds);
  int32_t minutes = -1;
  int32_t count = 0;
  for (int j = 1; j < data_->slotCount; ++j) {
    const float probability = GetSlotProbability((current + j) % data_->slotCount);
    if (probability == -1.0F) break;
    if (strengthLow_ > probability) {
      ++count;
      if (count == run) {
        minutes =
            ((j - run + 1) * slotSeconds - static_cast<int32_t>(seconds % slotSeconds) + 59) / 60;
        break;
      }
    } else {
      count = 0;
    }
  }
  return {{time, minutes}};
}

std::vector<PredictionRecord> PlainTracker::PredictWake(const tm& time) const {
  const int32_t slotSeconds = data_->minutesPerSlot * 60;
  const int64_t cycleSeconds = int64_t{data_->daysInCycle} * data_->minutesInDay * 60;
  const int64_t seconds = SecondsFromTm(time);
  const auto current = static_cast<int>(seconds % cycleSeconds / slotSeconds);
  for (int j = 1; j < data_->slotCount; ++j) {
    const float probability = GetSlotProbability((current + j) % data_->slotCount);
    if (probability == -1.0F) return {};
    if (probability >= strengthHigh_) {
      tm wake;
      TmFromSeconds(seconds - seconds % slotSeconds + int64_t{j} * slotSeconds, wake);
      return {{wake, PredictHibernate(wake)[0].minutes}};
    }
  }
  return {};
}

std::vector<PredictionRecord> PlainTracker::GetPredictions(const tm& time) const {
  std::vector<PredictionRecord> predictions = PredictHibernate(time);
  if (predictions[0].minutes == -1) return predictions;
  tm idleStart;
  TmFromSeconds(SecondsFromTm(time) + int64_t{predictions[0].minutes} * 60, idleStart);
  const std::vector<PredictionRecord> wake = PredictWake(idleStart);
  if (!wake.empty()) predictions.push_back(wake[0]);
  return predictions;
}

}  // namespace dozewell
