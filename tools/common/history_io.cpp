#include "common/history_io.h"

#include <cstring>
#include <string_view>
#include <utility>

#include "common/history_csv.h"
#include "common/input_file.h"
#include "common/output_file.h"
#include "common/text.h"

namespace dozewell {
namespace {

History FromCsv(const std::string& name, const std::vector<unsigned char>& content) {
  const auto records = ParseHistoryCsv(AsText(content), name);
  History history = {name, std::vector<unsigned char>(records.size() * sizeof(HistoryRecord)), {}};
  unsigned char* position = history.bytes.data();
  for (const CsvRecord& csv : records) {
    std::memcpy(position, &csv.record, sizeof(csv.record));
    position += sizeof(csv.record);
    history.lines.push_back(csv.line);
  }
  return history;
}

History FromContent(const std::string& name, std::vector<unsigned char> content) {
  if (IsCsvName(name)) return FromCsv(name, content);
  return {name, std::move(content), {}};
}

}  // namespace

bool IsCsvName(const std::string& name) {
  constexpr std::string_view kSuffix = ".csv";
  return name.size() >= kSuffix.size() &&
         EqualIgnoringCase(std::string_view(name).substr(name.size() - kSuffix.size()), kSuffix);
}

std::string History::Place(size_t record) const {
  if (!lines.empty()) return name + ": line " + std::to_string(lines[record]);
  return name + ": record " + std::to_string(record + 1) + " at offset " +
         std::to_string(record * sizeof(HistoryRecord));
}

History ToHistory(const std::string& name, std::span<const HistoryRecord> records) {
  const auto* const begin = reinterpret_cast<const unsigned char*>(records.data());
  return {name, {begin, begin + records.size_bytes()}, {}};
}

History LoadHistory(const std::string& name) { return FromContent(name, ReadInput(name)); }

std::optional<History> LoadHistoryIfExists(const std::string& name) {
  auto content = ReadInputIfExists(name);
  if (!content) return std::nullopt;
  return FromContent(name, *std::move(content));
}

History LoadCsvHistory(const std::string& name) { return FromCsv(name, ReadInput(name)); }

History LoadDatHistory(const std::string& name) { return {name, ReadInput(name), {}}; }

void SaveHistory(const std::string& name, std::span<const HistoryRecord> records) {
  if (IsCsvName(name)) {
    SaveCsvHistory(name, records);
  } else {
    SaveDatHistory(name, records);
  }
}

void SaveCsvHistory(const std::string& name, std::span<const HistoryRecord> records) {
  const std::string text = FormatHistoryCsv(records);
  OutputFile(name).Write(text.data(), text.size());
}

void SaveDatHistory(const std::string& name, std::span<const HistoryRecord> records) {
  OutputFile(name).Write(records.data(), records.size_bytes());
}

}  // namespace dozewell
