#ifndef DOZEWELL_SETTINGS_DATA_FOLDER_H_
#define DOZEWELL_SETTINGS_DATA_FOLDER_H_

#include <string>

namespace dozewell {

// The folder of the learnt data, ending with a backslash. Empty when the system names no
// program-data folder. Any thread.
std::wstring DataFolderPath();

// The same folder, created when missing. A failure to create it is ignored.
std::wstring GetDataFolder();

}  // namespace dozewell

#endif  // DOZEWELL_SETTINGS_DATA_FOLDER_H_
