#include "walk/slot_service.h"

#include <algorithm>

#include "base/wall_clock.h"
#include "settings/setting_names.h"

namespace dozewell {

SlotService::SlotService(IConfigurations& configuration, size_t strengths)
    : daysInCycle_(configuration.GetValue(kPredictorSection, kDaysInCycleName)) {
  std::ranges::transform(kBestSetParameters, configured_.begin(), [&](const char* key) {
    return configuration.GetValue(kPredictorSection, key);
  });
  Tracked& tracked = trackers_[configured_];
  tracked.parameters = ConfigurationsOf(configured_);
  tracked.tracker = std::make_unique<ArbitraryCycleProbabilityTracker>(&tracked.parameters);
  strengths_.assign(strengths, {false, configured_});
  for (size_t i = 0; i < strengths; ++i) {
    Apply(i, configuration.GetValue(kPredictorSection, BestSetName(i)));
  }
}

void SlotService::Learn(int64_t time, TimeLineState state) {
  TimeLineEvent event;
  TmFromSeconds(time, event.time);
  event.state = state;
  for (auto& [parameters, tracked] : trackers_) tracked.tracker->ProcessEvent(event);
}

void SlotService::Apply(size_t strength, std::string_view text) {
  const BestSetApplication application = ReadBestSet(text);
  strengths_[strength].isDisabled = application.disabled == 1;
  if (application.parameters) {
    std::ranges::transform(*application.parameters, strengths_[strength].parameters.begin(),
                           [](int32_t number) { return std::to_string(number); });
  }
  DropUnusedTrackers();
}

SuspendDecision SlotService::DecideAt(size_t strength, int64_t suspend) {
  tm now;
  TmFromSeconds(suspend, now);
  const auto& [isDisabled, parameters] = strengths_[strength];
  if (isDisabled) return DecideSuspend({}, now);
  return DecideSuspend(TrackerOf(parameters).GetPredictions(now), now);
}

SuspendDecision SlotService::DecideAsConfigured(int64_t suspend) {
  tm now;
  TmFromSeconds(suspend, now);
  return DecideSuspend(TrackerOf(configured_).GetPredictions(now), now);
}

NativeSimulatorConfigurations SlotService::ConfigurationsOf(const Parameters& parameters) const {
  const auto& [firstLast, secondLast, agregation, high, low, dayGrouping] = parameters;
  return {kSimulatedDataPath, daysInCycle_, firstLast, secondLast,
          agregation,         high,         low,       dayGrouping};
}

ITracker& SlotService::TrackerOf(const Parameters& parameters) {
  Tracked& tracked = trackers_[parameters];
  if (!tracked.tracker) {
    tracked.parameters = ConfigurationsOf(parameters);
    tracked.tracker = std::make_unique<ArbitraryCycleProbabilityTracker>(
        &tracked.parameters, CopyOf(*trackers_.at(configured_).tracker->GetData()));
  }
  return *tracked.tracker;
}

void SlotService::DropUnusedTrackers() {
  std::erase_if(trackers_, [&](const auto& entry) {
    return entry.first != configured_ &&
           std::ranges::none_of(strengths_, [&](const Strength& strength) {
             return !strength.isDisabled && strength.parameters == entry.first;
           });
  });
}

}  // namespace dozewell
