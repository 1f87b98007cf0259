#include "prediction/rates/sleep_pieces.h"

#include <doctest/doctest.h>

#include <vector>

#include "base/wall_clock.h"
#include "support/sleeps.h"

namespace dozewell {
namespace {

// Saturday 2026-11-21 23:47:30.
const int64_t kLeft = SecondsFromTm(LocalTime(2026, 11, 21, 23, 47)) + 30;

std::vector<int64_t> LengthsOf(int64_t suspend, int64_t end) {
  std::vector<int64_t> lengths;
  for (int64_t start = suspend; start < end; start += lengths.back()) {
    lengths.push_back(PieceFrom(suspend, start, end).seconds);
  }
  return lengths;
}

}  // namespace

TEST_CASE("a sleep is cut at ten minutes of the clock and at minutes of its first hour") {
  // Cut by the clock at 23:50, 00:00, ... and by the time away 1, 2, 3, 5, 7, 10, 15, ... minutes
  // on.
  CHECK(LengthsOf(kLeft, kLeft + 62 * 60) == std::vector<int64_t>{60,  60,  30,  30,  120, 120, 180,
                                                                  150, 150, 300, 150, 150, 300, 150,
                                                                  450, 150, 450, 150, 450, 120});
}

TEST_CASE("after its first hour a sleep is cut by the clock only") {
  CHECK(PieceFrom(kLeft, kLeft + kHour, kLeft + 9 * kHour).seconds == 150);
  CHECK(PieceFrom(kLeft, kLeft + kHour + 150, kLeft + 9 * kHour).seconds == 600);
}

TEST_CASE("the last piece ends with the sleep") {
  CHECK(PieceFrom(kLeft, kLeft, kLeft + 7).seconds == 7);
}

TEST_CASE("a mark that a piece begins at does not end it") {
  const int64_t midnight = SecondsFromTm(LocalTime(2026, 11, 22));
  CHECK(PieceFrom(midnight - 2 * kHour, midnight, midnight + kHour).seconds == 600);
}

TEST_CASE("a piece belongs to the cell of its middle") {
  const SleepPiece piece = PieceFrom(kLeft, kLeft, kLeft + kHour);
  CHECK(piece.start == kLeft);
  CHECK(piece.cell == RateCell{6, 71, 0});
  // Two and a half hours away is 02:17:30, behind the middle of the piece from 02:10 on.
  const int64_t tenPastTwo = SecondsFromTm(LocalTime(2026, 11, 22, 2, 10));
  CHECK(PieceFrom(kLeft, tenPastTwo, kLeft + 9 * kHour).cell == RateCell{0, 6, 4});
  CHECK(PieceFrom(kLeft, tenPastTwo + 600, kLeft + 9 * kHour).cell == RateCell{0, 7, 5});
}

TEST_CASE("the cell of a moment has its civil weekday and its twenty minutes of the clock") {
  const int64_t monday = SecondsFromTm(LocalTime(2026, 1, 5));
  CHECK(CellOf(monday, monday) == RateCell{1, 0, 0});
  CHECK(CellOf(monday, monday - 1 + 1200) == RateCell{1, 0, 2});
  CHECK(CellOf(monday, monday + 1200) == RateCell{1, 1, 2});
  CHECK(CellOf(monday, monday + 24 * kHour - 1) == RateCell{1, 71, 7});
  CHECK(CellOf(monday, monday + 24 * kHour) == RateCell{2, 0, 8});
  CHECK(CellOf(monday, monday + 6 * 24 * kHour) == RateCell{0, 0, 9});
}

TEST_CASE("the lower edge of a class of time away belongs to it") {
  const std::vector<int64_t> edges = {0,    180,       600,        1500,       3600,
                                      9000, 6 * kHour, 12 * kHour, 24 * kHour, 60 * kHour};
  for (size_t i = 0; i < edges.size(); ++i) {
    CHECK(AwayClassOf(edges[i]) == i);
    if (i > 0) CHECK(AwayClassOf(edges[i] - 1) == i - 1);
  }
}

TEST_CASE("each cell has an index of its own") {
  CHECK(RateCell{0, 0, 0}.Index() == 0);
  CHECK(RateCell{0, 0, 9}.Index() == 9);
  CHECK(RateCell{0, 1, 0}.Index() == 10);
  CHECK(RateCell{1, 0, 0}.Index() == 720);
  CHECK(RateCell{6, 71, 9}.Index() == kRateCells - 1);
}

}  // namespace dozewell
