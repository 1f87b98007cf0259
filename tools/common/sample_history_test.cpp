#include "common/sample_history.h"

#include <doctest/doctest.h>

#include <cmath>
#include <cstring>

#include "base/wall_clock.h"
#include "common/local_time.h"

namespace dozewell {
namespace {

constexpr const char* kKindNames[] = {"office", "home", "shift", "erratic"};
constexpr double kStart = 1704067200;

std::vector<HistoryRecord> Sample(const char* kind, int days, uint64_t seed) {
  const SampleKind* found = FindSampleKind(kind);
  REQUIRE(found != nullptr);
  return MakeSampleHistory(*found, days, seed);
}

bool SameBytes(const std::vector<HistoryRecord>& a, const std::vector<HistoryRecord>& b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(a[0])) == 0;
}

}  // namespace

TEST_CASE("there are four kinds of samples") {
  for (const char* name : kKindNames) CHECK(FindSampleKind(name) != nullptr);
  CHECK(FindSampleKind("Office") == nullptr);
  CHECK(FindSampleKind("") == nullptr);
  CHECK(SampleKindNames() == "office, home, shift, erratic");
}

TEST_CASE("records of a sample alternate, go forward and stay within its days") {
  for (const char* kind : kKindNames) {
    for (uint64_t seed : {uint64_t{0}, uint64_t{1}, uint64_t{2}, ~uint64_t{0}}) {
      for (int days : {1, 60, 1000}) {
        CAPTURE(kind);
        CAPTURE(seed);
        CAPTURE(days);
        const auto records = Sample(kind, days, seed);
        CHECK(records.size() % 2 == 0);
        double last = kStart - 1;
        uint32_t asleep = 0;
        bool wellFormed = true;
        for (const HistoryRecord& record : records) {
          wellFormed = wellFormed && record.time > last && record.asleep == asleep &&
                       record.reserved == 0 && record.time == std::floor(record.time);
          last = record.time;
          asleep = 1 - asleep;
        }
        CHECK(wellFormed);
        CHECK(last <= kStart + static_cast<double>(days * kSecondsPerDay));
        if (days >= 60) CHECK(records.size() > static_cast<size_t>(days));
      }
    }
  }
}

TEST_CASE("samples are the same on every system") {
  struct Row {
    const char* kind;
    size_t count;
    double first[4];
    double last;
  };
  constexpr Row kRows[] = {
      {"office", 260, {1704097067, 1704111812, 1704114949, 1704126336}, 1709228611},
      {"home", 252, {1704092753, 1704093567, 1704133221, 1704139942}, 1709244136},
      {"shift", 278, {1704088518, 1704103412, 1704105287, 1704117947}, 1709250673},
      {"erratic", 222, {1704267984, 1704280966, 1704297065, 1704310636}, 1709227214},
  };
  for (const Row& row : kRows) {
    CAPTURE(row.kind);
    const auto records = Sample(row.kind, 60, 1);
    REQUIRE(records.size() == row.count);
    for (size_t i = 0; i < 4; ++i) CHECK(records[i].time == row.first[i]);
    CHECK(records.back().time == row.last);
  }
}

TEST_CASE("a seed always makes the same sample, and another seed another") {
  for (const char* kind : kKindNames) {
    CHECK(SameBytes(Sample(kind, 60, 7), Sample(kind, 60, 7)));
    CHECK_FALSE(SameBytes(Sample(kind, 60, 7), Sample(kind, 60, 8)));
  }
}

TEST_CASE("a longer sample begins like a shorter one") {
  for (const char* kind : kKindNames) {
    const auto shorter = Sample(kind, 30, 3);
    auto longer = Sample(kind, 60, 3);
    REQUIRE(longer.size() > shorter.size());
    longer.resize(shorter.size() - 1);  // the last record may be cut at the end of the sample
    CHECK(std::memcmp(longer.data(), shorter.data(), longer.size() * sizeof(longer[0])) == 0);
  }
}

TEST_CASE("an office is empty on nearly all weekends and nights") {
  int atWeekends = 0;
  int atNight = 0;
  const auto records = Sample("office", 700, 1);
  for (const HistoryRecord& record : records) {
    tm time;
    TmFromSeconds(static_cast<int64_t>(record.time), time);
    if (time.tm_wday == 0 || time.tm_wday == 6) ++atWeekends;
    if (time.tm_hour < 7 || time.tm_hour >= 19) ++atNight;
  }
  CHECK(atWeekends < 40);
  CHECK(atNight == 0);
}

}  // namespace dozewell
