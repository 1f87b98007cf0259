#include "common/clairvoyant.h"

#include <cstddef>
#include <cstdint>
#include <optional>

#include "base/numbers.h"
#include "base/wall_clock.h"
#include "optimizer/simulator/native_simulator_configurations.h"
#include "optimizer/simulator/simulator.h"
#include "prediction/arbitrary_cycle_probability_tracker.h"

namespace dozewell {
namespace {

constexpr int64_t kSlot = kSimulatedTimeResolution * kSecondsPerMinute;
constexpr int64_t kIdleStretch = kIdleStretchMinutes * kSecondsPerMinute;

// The start of the slot that a time lies in.
int64_t SlotStart(int64_t time) { return WrapSubtract64(time, (time % kSlot + kSlot) % kSlot); }

// Predictions count in whole minutes from the time that they are made at.
int64_t InWholeMinutes(int64_t from, int64_t time) {
  const int64_t seconds = WrapSubtract64(time, from);
  return WrapAdd64(from, (seconds + kSecondsPerMinute - 1) / kSecondsPerMinute * kSecondsPerMinute);
}

}  // namespace

SleepPlan ClairvoyantPlan(int64_t suspend, int64_t resume) {
  const int64_t firstSlot = WrapAdd64(SlotStart(suspend), kSlot);
  const int64_t lastSlot = SlotStart(WrapSubtract64(resume, 1));
  if (WrapSubtract64(lastSlot, firstSlot) < kIdleStretch) return {};
  return {InWholeMinutes(suspend, firstSlot), lastSlot, std::nullopt};
}

SimTimeLine SimulateClairvoyant(std::span<const HistoryRecord> history) {
  constexpr int64_t kNever = 0;
  const SimTimeLine asleepThroughout = SimulateFixedTimeout(history, kNever);
  SimTimeLine timeLine;
  for (size_t i = 0; i < asleepThroughout.size(); ++i) {
    const SimEvent& event = asleepThroughout[i];
    timeLine.push_back(event);
    if (event.state != SimState::Asleep || i + 1 == asleepThroughout.size()) continue;
    const SleepPlan plan = ClairvoyantPlan(event.time, asleepThroughout[i + 1].time);
    if (!plan.hibernation) continue;
    timeLine.push_back({*plan.hibernation, SimState::PredictedHibernation});
    timeLine.push_back({*plan.wakeBack, SimState::PredictedWakeBack});
  }
  return timeLine;
}

}  // namespace dozewell
