#ifndef DOZEWELL_PREDICTION_DATA_FILE_H_
#define DOZEWELL_PREDICTION_DATA_FILE_H_

#include <string>

#include "prediction/configurations.h"
#include "prediction/tracker_data.h"

namespace dozewell {

// How reading a data file ended.
enum class DataFileState {
  Loaded,
  NotOpened,
  WrongSize,           // not the size that the configured cycle needs
  WrongShape,          // its slot count does not fit its size
  OtherConfiguration,  // written for another cycle or time resolution
};

struct LoadedData {
  DataFileState state;
  TrackerDataPtr data;  // null unless Loaded; its version is not yet examined
};

// Loads the data file if it is one for the configured cycle. Throws FixedTextException when the
// configuration has no cycle.
LoadedData LoadDataIfExists(IConfigurations& configuration, const std::wstring& path);

// Writes the data file in one write. A failure is not reported.
void SaveData(const TrackerData& data, const std::wstring& path);

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_DATA_FILE_H_
