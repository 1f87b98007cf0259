#include "common/file_kind.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "base/wall_clock.h"
#include "common/powerwatch_format.h"
#include "common/tool_error.h"
#include "prediction/history_file.h"
#include "prediction/tracker_data.h"

namespace dozewell {
namespace {

using Content = std::span<const unsigned char>;

bool IsUtf16(Content content) {
  return content.size() >= 2 &&
         ((content[0] == 0xFF && content[1] == 0xFE) || (content[0] == 0xFE && content[1] == 0xFF));
}

bool IsHistory(Content content) {
  constexpr uint32_t kLastState = 3;
  if (content.size() % sizeof(HistoryRecord) != 0) return false;
  const auto records = WholeRecords(content);
  const auto isPlausible = [](const HistoryRecord& record) {
    return record.time >= 0 && record.time <= static_cast<double>(kLastSecond) &&
           record.asleep <= kLastState;
  };
  const auto isNotLater = [](const HistoryRecord& a, const HistoryRecord& b) {
    return a.time >= b.time;
  };
  return records.size() >= 2 && std::ranges::all_of(records, isPlausible) &&
         std::ranges::adjacent_find(records, isNotLater) == records.end();
}

bool IsPowerwatchFile(Content content) {
  return content.size() >= kPowerwatchHeader.size() &&
         std::equal(kPowerwatchHeader.begin(), kPowerwatchHeader.end(), content.begin());
}

const char* TextKind(Content content) { return IsUtf16(content) ? "UTF-16 text" : "text"; }

ToolError WrongFile(const std::string& name, const char* needed, const std::string& found) {
  return ToolError(name + ": no " + needed + ": it looks like " + found);
}

constexpr const char* kHistory = "history (zs7state.dat)";
constexpr const char* kDataFile = "data file (cpredict.z7)";
constexpr const char* kCsv = "CSV history";

}  // namespace

bool IsText(Content content) {
  constexpr size_t kLookedAt = 4096;
  const Content begin = content.first(std::min(content.size(), kLookedAt));
  return IsUtf16(content) || (!begin.empty() && std::ranges::count(begin, 0) == 0);
}

bool IsDataFile(Content content) {
  TrackerData header;
  if (content.size() < sizeof(header)) return false;
  std::memcpy(&header, content.data(), sizeof(header));
  return header.version == 0 && header.daysInCycle != 0 && header.minutesInDay != 0 &&
         header.minutesPerSlot != 0 && header.slotCount != 0 &&
         static_cast<int64_t>(content.size()) == TrackerDataSize(header.slotCount);
}

void RequireHistory(const std::string& name, Content content) {
  if (IsText(content)) {
    throw WrongFile(name, kHistory,
                    std::string(TextKind(content)) + "; the name of a CSV history ends in .csv");
  }
  if (IsDataFile(content)) throw WrongFile(name, kHistory, std::string("a ") + kDataFile);
}

void RequireDataFile(const std::string& name, Content content) {
  if (IsText(content)) throw WrongFile(name, kDataFile, TextKind(content));
  if (IsHistory(content)) throw WrongFile(name, kDataFile, std::string("a ") + kHistory);
}

void RequireCsv(const std::string& name, Content content) {
  if (IsUtf16(content)) throw WrongFile(name, kCsv, "UTF-16 text; it must be UTF-8");
  if (IsDataFile(content)) throw WrongFile(name, kCsv, std::string("a ") + kDataFile);
  if (IsHistory(content)) throw WrongFile(name, kCsv, std::string("a ") + kHistory);
  if (IsPowerwatchFile(content)) {
    throw WrongFile(name, kCsv, "a file of dozewell-powerwatch; import --from-event-log reads it");
  }
}

}  // namespace dozewell
