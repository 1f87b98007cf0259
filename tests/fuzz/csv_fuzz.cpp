// Reads a CSV history of any content, writes it and checks that reading it again gives the same.

#include <bit>
#include <cmath>
#include <string_view>

#include "common/history_csv.h"
#include "common/tool_error.h"
#include "fuzz/input.h"

namespace dozewell {
namespace {

bool SameTime(double a, double b) {
  return std::bit_cast<uint64_t>(a) == std::bit_cast<uint64_t>(b) ||
         (std::isnan(a) && std::isnan(b));
}

void Run(std::string_view text) {
  std::vector<HistoryRecord> records;
  for (const CsvRecord& line : ParseHistoryCsv(text, "history")) records.push_back(line.record);
  const std::vector<CsvRecord> again = ParseHistoryCsv(FormatHistoryCsv(records, {}), "again");
  fuzz::Require(again.size() == records.size());
  for (size_t i = 0; i < records.size(); ++i) {
    fuzz::Require(SameTime(again[i].record.time, records[i].time));
    fuzz::Require(again[i].record.asleep == records[i].asleep);
  }
}

}  // namespace
}  // namespace dozewell

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  try {
    dozewell::Run({reinterpret_cast<const char*>(data), size});
  } catch (const dozewell::ToolError&) {
    // A file may be refused.
  }
  return 0;
}
