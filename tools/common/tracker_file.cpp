#include "common/tracker_file.h"

#include <utility>

namespace dozewell {

namespace {

LoadedTracker TrackerOn(IConfigurations& configuration, LoadedData loaded) {
  if (!loaded.data) return {loaded.state, ArbitraryCycleProbabilityTracker(&configuration)};
  return {loaded.state, ArbitraryCycleProbabilityTracker(&configuration, std::move(loaded.data))};
}

}  // namespace

LoadedTracker LoadTracker(IConfigurations& configuration, const std::wstring& path) {
  return TrackerOn(configuration, LoadDataIfExists(configuration, path));
}

LoadedTracker LoadTracker(IConfigurations& configuration, std::span<const unsigned char> content) {
  return TrackerOn(configuration, LoadContent(configuration, content));
}

const char* WhyIgnored(DataFileState state) {
  switch (state) {
    case DataFileState::Loaded:
      return nullptr;
    case DataFileState::NotOpened:
    case DataFileState::NotRead:
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

}  // namespace dozewell
