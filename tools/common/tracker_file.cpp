#include "common/tracker_file.h"

#include <utility>

namespace dozewell {

LoadedTracker LoadTracker(IConfigurations& configuration, const std::wstring& path) {
  LoadedData loaded = LoadDataIfExists(configuration, path);
  if (!loaded.data) return {loaded.state, ArbitraryCycleProbabilityTracker(&configuration)};
  return {loaded.state, ArbitraryCycleProbabilityTracker(&configuration, std::move(loaded.data))};
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
