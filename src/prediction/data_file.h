#ifndef DOZEWELL_PREDICTION_DATA_FILE_H_
#define DOZEWELL_PREDICTION_DATA_FILE_H_

#include <span>
#include <string>

#include "prediction/configurations.h"
#include "prediction/tracker_data.h"

namespace dozewell {

// How reading a data file ended.
enum class DataFileState {
  Loaded,
  NotOpened,           // it does not exist
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

// The same from a file's content.
LoadedData LoadContent(IConfigurations& configuration, std::span<const unsigned char> content);

// What a predictor hands over to the next one.
struct KnownData {
  TrackerDataPtr data;          // null when there is none
  bool isSaved = true;          // the data file has the same content
  bool isOfUnreadFile = false;  // learning began blank, because the data file could not be read
};

// Loads the data file, or takes over `known` if it fits the configuration and is newer than the
// file or the file cannot be read. If the file can be read now but could not when `known` was
// begun, the file is loaded.
LoadedData LoadNewestData(IConfigurations& configuration, const std::wstring& path,
                          KnownData known);

// Writes the data file; false, without a report, when that failed. With `isOfUnreadFile` an
// existing file is kept, unless the disk cannot read it and it was set aside.
bool SaveData(const TrackerData& data, const std::wstring& path, bool isOfUnreadFile);

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_DATA_FILE_H_
