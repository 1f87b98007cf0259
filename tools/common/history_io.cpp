#include "common/history_io.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

#include "common/file_kind.h"
#include "common/history_csv.h"
#include "common/input_file.h"
#include "common/output_file.h"
#include "common/service_file.h"
#include "common/standard_stream.h"
#include "common/text.h"

namespace dozewell {
namespace {

History FromCsv(const std::string& name, const std::vector<unsigned char>& content) {
  RequireCsv(name, content);
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

History FromDat(const std::string& name, std::vector<unsigned char> content) {
  RequireHistory(name, content);
  return {name, std::move(content), {}};
}

History FromContent(const std::string& name, std::vector<unsigned char> content) {
  // Standard input has no name that would tell.
  const bool isCsv = IsStandardStream(name) ? IsText(content) : IsCsvName(name);
  return isCsv ? FromCsv(name, content) : FromDat(name, std::move(content));
}

// What is wrong with a history, in one line; empty when nothing is.
std::string Damage(const History& history) {
  constexpr uint32_t kLastState = 3;
  const auto records = WholeRecords(history.bytes);
  const auto count = [&records](const auto& isSo) {
    return static_cast<int64_t>(std::ranges::count_if(records, isSo));
  };
  const auto passedOver =
      static_cast<int64_t>(records.size() - IncreasingRecords(history.bytes).size());
  const auto noTime = count([](const HistoryRecord& r) { return !std::isfinite(r.time); });
  const auto noState = count([](const HistoryRecord& r) { return r.asleep > kLastState; });
  std::string damage;
  const auto add = [&damage](const std::string& what) {
    damage += (damage.empty() ? "" : ", ") + what;
  };
  if (passedOver > 0) {
    add(CountText(passedOver, "record", "records") + " not later than one before");
  }
  if (noTime > 0) add(CountText(noTime, "record", "records") + " without a time");
  if (noState > 0) add(CountText(noState, "record", "records") + " with a state above 3");
  if (history.bytes.size() % sizeof(HistoryRecord) != 0) add("an incomplete record at the end");
  return damage;
}

History Examined(History history, std::vector<std::string>& warnings) {
  const std::string damage = Damage(history);
  if (!damage.empty()) warnings.push_back(history.name + ": damaged: " + damage);
  return history;
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

History LoadHistory(const std::string& name, std::vector<std::string>& warnings) {
  return Examined(FromContent(name, ReadInput(NameThatCounts(name))), warnings);
}

std::optional<History> LoadHistoryIfExists(const std::string& name,
                                           std::vector<std::string>& warnings) {
  auto content = ReadInputIfExists(NameThatCounts(name));
  if (!content) return std::nullopt;
  return Examined(FromContent(name, *std::move(content)), warnings);
}

History LoadCsvHistory(const std::string& name, std::vector<std::string>& warnings) {
  return Examined(FromCsv(name, ReadInput(NameThatCounts(name))), warnings);
}

History LoadDatHistory(const std::string& name, std::vector<std::string>& warnings) {
  return DatHistory(name, ReadInput(NameThatCounts(name)), warnings);
}

History DatHistory(const std::string& name, std::vector<unsigned char> content,
                   std::vector<std::string>& warnings) {
  return Examined(FromDat(name, std::move(content)), warnings);
}

void SaveHistory(const std::string& name, std::span<const HistoryRecord> records,
                 const MachineIdentity& identity) {
  if (IsCsvName(name)) {
    SaveCsvHistory(name, records, identity);
  } else {
    SaveDatHistory(name, records);
  }
}

void SaveCsvHistory(const std::string& name, std::span<const HistoryRecord> records,
                    MachineIdentity identity) {
  identity.time = TimeOfLast(records);
  const std::string text = FormatHistoryCsv(records, identity);
  OutputFile(name).Write(text.data(), text.size());
}

void SaveDatHistory(const std::string& name, std::span<const HistoryRecord> records) {
  OutputFile(name).Write(records.data(), records.size_bytes());
}

}  // namespace dozewell
