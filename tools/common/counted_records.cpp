#include "common/counted_records.h"

#include <bit>
#include <cstdint>

namespace dozewell {
namespace {

// Compares all bits, so that not-a-number is the same as itself.
bool IsSameTime(const HistoryRecord& a, const HistoryRecord& b) {
  return std::bit_cast<uint64_t>(a.time) == std::bit_cast<uint64_t>(b.time);
}

}  // namespace

std::vector<CountedRecord> CountedRecords(const std::vector<unsigned char>& bytes) {
  const auto records = WholeRecords(bytes);
  std::vector<CountedRecord> counted;
  size_t position = 0;
  for (const HistoryRecord& record : IncreasingRecords(bytes)) {
    // A record that counts is later than all skipped before it, so its time is enough to find it.
    while (!IsSameTime(records[position], record)) ++position;
    counted.push_back({record, position});
  }
  return counted;
}

}  // namespace dozewell
