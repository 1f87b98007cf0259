#ifndef DOZEWELL_COMMON_TRACKER_FILE_H_
#define DOZEWELL_COMMON_TRACKER_FILE_H_

#include <span>
#include <string>

#include "prediction/arbitrary_cycle_probability_tracker.h"
#include "prediction/configurations.h"
#include "prediction/data_file.h"

namespace dozewell {

struct LoadedTracker {
  DataFileState state;  // whether the data file was loaded, or why not
  ArbitraryCycleProbabilityTracker tracker;
};

// The tracker that the service's predictor would use: on the content of a data file, or with
// nothing learnt when the file is not for the configured cycle. The configuration is not owned and
// must outlive it. Throws what the tracker throws.
LoadedTracker LoadTracker(IConfigurations& configuration, const std::wstring& path);
// The same from a data file's content.
LoadedTracker LoadTracker(IConfigurations& configuration, std::span<const unsigned char> content);

// What is wrong with a data file that was ignored; null for one that was loaded.
const char* WhyIgnored(DataFileState state);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_TRACKER_FILE_H_
