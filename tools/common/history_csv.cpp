#include "common/history_csv.h"

#include <cmath>
#include <cstdint>
#include <optional>

#include "common/float_text.h"
#include "common/local_time.h"
#include "common/text.h"
#include "common/tool_error.h"

namespace dozewell {
namespace {

constexpr std::string_view kTimeColumn = "epoch_wallclock_seconds";
constexpr std::string_view kAsleepColumn = "asleep";

struct Columns {
  std::string_view time;
  std::string_view asleep;
};

std::optional<Columns> SplitColumns(std::string_view line) {
  const size_t comma = line.find(',');
  if (comma == std::string_view::npos) return std::nullopt;
  return Columns{TrimBlanks(line.substr(0, comma)), TrimBlanks(line.substr(comma + 1))};
}

std::optional<double> ParseTime(std::string_view text) {
  const auto seconds = ParseNumber<double>(text);
  if (seconds && std::isfinite(*seconds)) return seconds;
  if (const auto time = ParseLooseLocalTime(text)) return SecondsFromTm(*time);
  return std::nullopt;
}

HistoryRecord ParseRecord(const std::optional<Columns>& columns, const std::string& where) {
  if (!columns) throw ToolError(where + "not two columns with a comma between them");
  const auto time = ParseTime(columns->time);
  if (!time) {
    throw ToolError(where + "neither seconds nor a local time: " + std::string(columns->time));
  }
  const auto asleep = ParseNumber<uint32_t>(columns->asleep);
  if (!asleep) {
    throw ToolError(where + "asleep is not a whole number from 0 to 4294967295: " +
                    std::string(columns->asleep));
  }
  return {*time, *asleep, 0};
}

}  // namespace

std::vector<CsvRecord> ParseHistoryCsv(std::string_view text, const std::string& name) {
  std::vector<CsvRecord> records;
  int lineNumber = 0;
  bool first = true;
  for (std::string_view line : SplitLines(text)) {
    ++lineNumber;
    const std::string_view content = TrimBlanks(line);
    if (content.empty() || content.front() == '#') continue;
    const auto columns = SplitColumns(line);
    const bool namesColumns = first && columns && EqualIgnoringCase(columns->asleep, kAsleepColumn);
    first = false;
    if (namesColumns) continue;
    const std::string where = name + ": line " + std::to_string(lineNumber) + ": ";
    records.push_back({ParseRecord(columns, where), lineNumber});
  }
  return records;
}

std::string FormatHistoryCsv(std::span<const HistoryRecord> records,
                             const MachineIdentity& identity) {
  std::string text = IdentityComment(identity);
  text.append(kTimeColumn).append(",").append(kAsleepColumn).append("\n");
  for (const HistoryRecord& record : records) {
    text += DoubleText(record.time) + "," + std::to_string(record.asleep) + "\n";
  }
  return text;
}

}  // namespace dozewell
