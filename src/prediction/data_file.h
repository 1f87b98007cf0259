#ifndef DOZEWELL_PREDICTION_DATA_FILE_H_
#define DOZEWELL_PREDICTION_DATA_FILE_H_

#include <string>

#include "prediction/configurations.h"
#include "prediction/tracker_data.h"

namespace dozewell {

// How reading a data file ended.
enum class DataFileState {
  Loaded,
  NotOpened,           // there is none
  NotRead,             // it cannot be opened or read
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

// What one predictor knows that another one is to go on with.
struct KnownData {
  TrackerDataPtr data;          // null when there is none
  bool isSaved = true;          // the data file holds the same
  bool isOfUnreadFile = false;  // it was begun blank, beside a file that could not be read
};

// Loads the data file, or takes what is known where that fits the configuration and the file does
// not have it: it is newer, or the file cannot be read. A file that could not be read before, and
// now can, takes precedence over what was begun beside it.
LoadedData LoadNewestData(IConfigurations& configuration, const std::wstring& path,
                          KnownData known);

// Writes the data file; false, unreported, when it could not be written. When the data were begun
// beside a file that could not be read, that file is kept: the data are written only once it is
// gone.
bool SaveData(const TrackerData& data, const std::wstring& path, bool isOfUnreadFile);

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_DATA_FILE_H_
