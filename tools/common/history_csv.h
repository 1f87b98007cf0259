#ifndef DOZEWELL_COMMON_HISTORY_CSV_H_
#define DOZEWELL_COMMON_HISTORY_CSV_H_

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "common/machine_identity.h"
#include "prediction/history_file.h"

namespace dozewell {

// One line of a CSV history.
struct CsvRecord {
  HistoryRecord record;
  int line;  // counted from 1
};

// The records of a CSV history, in the order of its lines. Its columns are a time, in wall-clock
// seconds or as an ISO local time, and whether the machine went to sleep. Blank lines and those
// that begin with # are skipped, as is a first line that names the columns. Throws ToolError, with
// `name` and the number of the line, for any other line.
std::vector<CsvRecord> ParseHistoryCsv(std::string_view text, const std::string& name);

// A CSV history with a comment that says which machine's it is, if that has a name, with a line
// that names the columns, and without the records' reserved bytes.
std::string FormatHistoryCsv(std::span<const HistoryRecord> records,
                             const MachineIdentity& identity);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_HISTORY_CSV_H_
