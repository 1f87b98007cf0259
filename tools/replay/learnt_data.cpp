#include "replay/learnt_data.h"

#include <cstring>
#include <utility>
#include <vector>

#include "base/file.h"
#include "replay/input_file.h"
#include "replay/option_text.h"
#include "replay/replay_error.h"

namespace dozewell {
namespace {

std::optional<TrackerData> ReadHeader(const std::string& name) {
  const auto bytes = ReadInput(name);
  TrackerData header;
  if (bytes.size() < sizeof(header)) return std::nullopt;
  std::memcpy(&header, bytes.data(), sizeof(header));
  return header;
}

const char* WhyIgnored(DataFileState state) {
  switch (state) {
    case DataFileState::Loaded:
      return nullptr;
    case DataFileState::NotOpened:
      return "it cannot be opened";
    case DataFileState::WrongSize:
      return "it is not of the size that the configured cycle needs";
    case DataFileState::WrongShape:
      return "its slot count does not fit its size";
    case DataFileState::OtherConfiguration:
      return "it was written for another cycle or time resolution";
  }
  return nullptr;
}

}  // namespace

CycleShape ConfiguredShape(IConfigurations& configuration) {
  return {ReadPredictorNumber(configuration, "DaysInCycle", kNone),
          ReadPredictorNumber(configuration, "MinutesInDay", kNone),
          static_cast<int32_t>(configuration.GetTimeResolution())};
}

LearntData::LearntData(const Options& options, Results& results)
    : name_(options.data.value()),
      configuration_(LoadSettings(options.settings)),
      header_(ReadHeader(name_)),
      predictor_(&configuration_, &historian_, PathFromSystem(name_)) {
  if (const char* why = WhyIgnored(predictor_.LoadState())) {
    results.warnings.push_back(name_ + ": ignored: " + why);
    header_.reset();
  }
}

ArbitraryCycleProbabilityTracker LearntData::Tracker() {
  LoadedData loaded = LoadDataIfExists(configuration_, PathFromSystem(name_));
  if (!loaded.data) return ArbitraryCycleProbabilityTracker(&configuration_);
  return ArbitraryCycleProbabilityTracker(&configuration_, std::move(loaded.data));
}

tm LearntData::TimeOrLastEvent(const char* option, const std::optional<std::string>& text) const {
  if (text) return ParseTimeOption(option, *text);
  tm time;
  if (!header_ || !TmFromSeconds(SecondsFromTm(header_->lastTime), time)) {
    throw ReplayError(name_ + ": holds no event whose time could be taken; give " + option);
  }
  return time;
}

}  // namespace dozewell
