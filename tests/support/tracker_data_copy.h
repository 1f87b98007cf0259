#ifndef DOZEWELL_TESTS_SUPPORT_TRACKER_DATA_COPY_H_
#define DOZEWELL_TESTS_SUPPORT_TRACKER_DATA_COPY_H_

#include <cstddef>
#include <cstdlib>
#include <cstring>

#include "prediction/arbitrary_cycle_probability_tracker.h"
#include "prediction/tracker_data.h"

namespace dozewell {

inline TrackerDataPtr CopyOf(const TrackerData& data) {
  const auto size = static_cast<size_t>(TrackerDataSize(data.slotCount));
  TrackerDataPtr copy(static_cast<TrackerData*>(std::malloc(size)));
  std::memcpy(static_cast<void*>(copy.get()), &data, size);
  return copy;
}

// The data of a tracker that has learnt nothing, for a test to fill.
inline TrackerDataPtr NewData(IConfigurations& configuration) {
  return CopyOf(*ArbitraryCycleProbabilityTracker(&configuration).GetData());
}

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_SUPPORT_TRACKER_DATA_COPY_H_
