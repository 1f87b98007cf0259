#ifndef DOZEWELL_IMPORT_LOST_RECORDS_H_
#define DOZEWELL_IMPORT_LOST_RECORDS_H_

#include <cstddef>
#include <span>
#include <string>

#include "prediction/history_file.h"

namespace dozewell {

// How many records the file of this name holds that would be lost if it were replaced by these.
// A file that is missing or no history, in either form, holds none. Throws ToolError when it cannot
// be read.
size_t CountLostRecords(const std::string& name, std::span<const HistoryRecord> replacement);

}  // namespace dozewell

#endif  // DOZEWELL_IMPORT_LOST_RECORDS_H_
