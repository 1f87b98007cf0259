#include "fleet/ordered_rows.h"

#include <doctest/doctest.h>

#include <atomic>
#include <stdexcept>

#include "fleet/crew.h"

namespace dozewell::fleet {
namespace {

constexpr size_t kRows = 1000;

// Some rows take longer than others.
MachineRow Make(size_t i) {
  if (i % 97 == 0) Pause();
  MachineRow row;
  row.records = static_cast<int64_t>(i);
  return row;
}

}  // namespace

TEST_CASE("Rows come in their order from however many threads") {
  for (const int threads : {1, 2, 8}) {
    CAPTURE(threads);
    int64_t next = 3;
    bool isInOrder = true;
    InOrder(3, kRows, threads, Make,
            [&](const MachineRow& row) { isInOrder = isInOrder && row.records == next++; });
    CHECK(isInOrder);
    CHECK(next == kRows);
  }
}

TEST_CASE("Threads do not run far ahead of the rows that are taken") {
  constexpr int kThreads = 2;
  constexpr size_t kAhead = 64 * kThreads;
  std::atomic<size_t> made = 0;
  size_t taken = 0;
  size_t furthest = 0;
  InOrder(
      0, kRows, kThreads,
      [&](size_t i) {
        ++made;
        return Make(i);
      },
      [&](const MachineRow&) {
        ++taken;
        furthest = std::max(furthest, made - taken);
      });
  CHECK(taken == kRows);
  CHECK(furthest <= kAhead);
}

TEST_CASE("A failure to take a row ends all of it") {
  std::atomic<size_t> made = 0;
  CHECK_THROWS_WITH(InOrder(
                        0, kRows, 2,
                        [&](size_t i) {
                          ++made;
                          return Make(i);
                        },
                        [](const MachineRow& row) {
                          if (row.records == 5) throw std::runtime_error("no room");
                        }),
                    "no room");
  CHECK(made < kRows);
}

TEST_CASE("Nothing to make is nothing to take") {
  InOrder(0, 0, 2, Make, [](const MachineRow&) { FAIL("a row"); });
}

}  // namespace dozewell::fleet
