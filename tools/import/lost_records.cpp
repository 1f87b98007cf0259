#include "import/lost_records.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <set>
#include <utility>
#include <vector>

#include "base/file.h"
#include "common/file_kind.h"
#include "common/history_csv.h"
#include "common/input_file.h"
#include "common/named_file.h"
#include "common/service_file.h"
#include "common/tool_error.h"

namespace dozewell {
namespace {

std::vector<HistoryRecord> CsvRecords(const std::vector<unsigned char>& content) {
  std::vector<HistoryRecord> records;
  try {
    for (const CsvRecord& line : ParseHistoryCsv(AsText(content), "")) {
      records.push_back(line.record);
    }
  } catch (const ToolError&) {
    return {};  // Some other text.
  }
  return records;
}

std::vector<HistoryRecord> RecordsIn(const std::string& name) {
  const std::string counts = NameThatCounts(name);
  // Reading a pipe would wait for somebody to write.
  if (LookUp(PathFromSystem(counts)).kind != FileKind::Regular) return {};
  const auto content = ReadInput(counts);
  if (IsDataFile(content)) return {};
  return IsText(content) ? CsvRecords(content) : WholeRecords(content);
}

// All bits count, so that not-a-number is the same as itself.
std::pair<uint64_t, uint32_t> KeyOf(const HistoryRecord& record) {
  return {std::bit_cast<uint64_t>(record.time), record.asleep};
}

}  // namespace

size_t CountLostRecords(const std::string& name, std::span<const HistoryRecord> replacement) {
  std::set<std::pair<uint64_t, uint32_t>> kept;
  for (const HistoryRecord& record : replacement) kept.insert(KeyOf(record));
  const auto isLost = [&kept](const HistoryRecord& record) {
    return !kept.contains(KeyOf(record));
  };
  return static_cast<size_t>(std::ranges::count_if(RecordsIn(name), isLost));
}

}  // namespace dozewell
