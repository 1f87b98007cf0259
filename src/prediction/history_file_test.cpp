#include "prediction/history_file.h"

#include <doctest/doctest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "support/local_times.h"

namespace dozewell {
namespace {

using Bytes = std::vector<unsigned char>;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

Bytes BytesOf(const std::vector<HistoryRecord>& records, size_t tail = 0) {
  Bytes bytes(records.size() * sizeof(HistoryRecord));
  if (!bytes.empty()) std::memcpy(bytes.data(), records.data(), bytes.size());
  if (tail > 0) bytes.resize(bytes.size() - sizeof(HistoryRecord) + tail);
  return bytes;
}

// The fields of the records, for comparison.
Bytes Merged(const Bytes& file, const std::vector<HistoryRecord>& pending, double cutoff) {
  return BytesOf(MergeHistory(&file, pending, cutoff));
}

}  // namespace

TEST_CASE("a history record is 16 little-endian bytes") {
  CHECK(BytesOf({{1.0, 1, 0x04030201}}) ==
        Bytes{0, 0, 0, 0, 0, 0, 0xF0, 0x3F, 1, 0, 0, 0, 1, 2, 3, 4});
}

TEST_CASE("records count while their times increase") {
  const Bytes file = BytesOf({{5, 1, 0}, {5, 0, 0}, {4, 0, 0}, {6, 1, 7}, {kNan, 0, 0}, {7, 2, 0}});
  CHECK(BytesOf(IncreasingRecords(file)) == BytesOf({{5, 1, 0}, {6, 1, 7}, {7, 2, 0}}));
  CHECK(IncreasingRecords({}).empty());
  const Bytes nanFirst = BytesOf({{kNan, 1, 0}, {5, 0, 0}});
  CHECK(BytesOf(IncreasingRecords(nanFirst)) == BytesOf({{kNan, 1, 0}}));
}

TEST_CASE("a partial tail is no whole record") {
  CHECK(WholeRecords(BytesOf({{5, 1, 0}, {6, 0, 0}}, 15)).size() == 1);
  CHECK(WholeRecords(Bytes(15)).empty());
}

TEST_CASE("a record becomes a whole second and one of two states") {
  CHECK(ToTimeLineEvent({951827696.9, 0, 0}).time == LocalTime(2000, 2, 29, 12, 34, 56));
  CHECK(ToTimeLineEvent({1, 0, 0}).state == Activating);
  CHECK(ToTimeLineEvent({1, 1, 0}).state == Suspend);
  CHECK(ToTimeLineEvent({1, 3, 0}).state == Suspend);
  constexpr tm kNoTime = {-1, -1, -1, -1, -1, -1, -1, -1, -1};
  CHECK(ToTimeLineEvent({kNan, 0, 0}).time == kNoTime);
  CHECK(ToTimeLineEvent({-1, 0, 0}).time == kNoTime);
  CHECK(ToTimeLineEvent({1e18, 0, 0}).time == kNoTime);
}

TEST_CASE("a file of whole records comes back unchanged apart from those older than the limit") {
  const Bytes file = BytesOf({{10, 1, 9}, {20, 0, 9}, {30, 1, 9}});
  CHECK(Merged(file, {}, 0) == file);
  CHECK(Merged(file, {}, 20) == BytesOf({{20, 0, 9}, {30, 1, 9}}));
  CHECK(Merged(file, {}, 31).empty());
}

TEST_CASE("a record out of order is discarded and of equal times the first stays") {
  CHECK(Merged(BytesOf({{20, 1, 0}, {10, 0, 0}, {20, 0, 0}, {30, 0, 0}}), {}, 0) ==
        BytesOf({{20, 1, 0}, {30, 0, 0}}));
}

TEST_CASE("a pending record older than the limit is still written") {
  CHECK(Merged(BytesOf({{10, 1, 0}}), {{15, 0, 0}}, 100) == BytesOf({{15, 0, 0}}));
}

TEST_CASE("a pending record not later than the last one is discarded") {
  CHECK(Merged(BytesOf({{10, 1, 0}}), {{10, 0, 0}, {9, 0, 0}, {11, 0, 0}}, 0) ==
        BytesOf({{10, 1, 0}, {11, 0, 0}}));
}

TEST_CASE("a partial tail is laid over the record before it") {
  const std::vector<HistoryRecord> records = {{10, 1, 0x11111111}, {20, 0x22222222, 0x33333333}};
  // A whole time, and a time with half a code.
  CHECK(Merged(BytesOf(records, 8), {}, 0) == BytesOf({{10, 1, 0x11111111}, {20, 1, 0x11111111}}));
  CHECK(Merged(BytesOf(records, 10), {}, 0) ==
        BytesOf({{10, 1, 0x11111111}, {20, 0x00002222, 0x11111111}}));
  // Seven of eight bytes of the time. The eighth is that of the record before, 0x40 for both.
  CHECK(Merged(BytesOf(records, 7), {}, 0) == BytesOf({{10, 1, 0x11111111}, {20, 1, 0x11111111}}));
  // Fewer bytes do not make the time later: the low bytes of both 10 and 20 are zero.
  CHECK(Merged(BytesOf(records, 6), {}, 0) == BytesOf({{10, 1, 0x11111111}}));
  // The record below may be one that the limit dropped.
  CHECK(Merged(BytesOf(records, 8), {}, 15) == BytesOf({{20, 1, 0x11111111}}));
}

TEST_CASE("a partial tail alone is laid over zeros") {
  CHECK(Merged(BytesOf({{20, 1, 1}}, 8), {}, 0) == BytesOf({{20, 0, 0}}));
}

TEST_CASE("an empty file reads as one record of zeros where the limit lets 1970 in") {
  CHECK(Merged({}, {}, 0) == BytesOf({{0, 0, 0}}));
  CHECK(Merged({}, {}, 1).empty());
  CHECK(MergeHistory(nullptr, {}, 0).empty());
}

TEST_CASE("times that are not numbers never pass the limit") {
  CHECK(Merged(BytesOf({{kNan, 1, 0}, {10, 0, 0}}), {}, 0) == BytesOf({{10, 0, 0}}));
}

TEST_CASE("the limit counts days back in 64 bits") {
  CHECK(HistoryCutoff(10000000, 60) == 10000000.0 - 5184000.0);
  CHECK(HistoryCutoff(0, 4294967295U) == -371085174288000.0);
  CHECK(HistoryCutoff(std::numeric_limits<int64_t>::min(), 1) == 9223372036854689408.0);
}

}  // namespace dozewell
