#include "prediction/rates/sleep_pieces.h"

#include <doctest/doctest.h>

#include <vector>

#include "base/wall_clock.h"
#include "support/sleeps.h"

namespace dozewell {
namespace {

// Saturday 2026-11-21 23:47:30.
const int64_t kLeft = SecondsFromTm(LocalTime(2026, 11, 21, 23, 47)) + 30;

// The piece of a sleep that begins after some seconds.
SleepPieces PieceAt(int64_t suspend, int64_t length, int64_t start) {
  SleepPieces pieces(suspend, length);
  while (pieces.Start() < start) pieces.Next();
  CHECK(pieces.Start() == start);
  return pieces;
}

}  // namespace

TEST_CASE("a sleep is cut at ten minutes of the clock and at minutes of its first hour") {
  std::vector<int64_t> lengths;
  for (SleepPieces pieces(kLeft, 62 * 60); !pieces.AreOver(); pieces.Next()) {
    lengths.push_back(pieces.Seconds());
  }
  // Cut by the clock at 23:50, 00:00, ... and by the time away 1, 2, 3, 5, 7, 10, 15, ... minutes
  // on.
  CHECK(lengths == std::vector<int64_t>{60,  60,  30,  30,  120, 120, 180, 150, 150, 300,
                                        150, 150, 300, 150, 450, 150, 450, 150, 450, 120});
}

TEST_CASE("after its first hour a sleep is cut by the clock only") {
  CHECK(PieceAt(kLeft, 9 * kHour, kHour).Seconds() == 150);
  CHECK(PieceAt(kLeft, 9 * kHour, kHour + 150).Seconds() == 600);
}

TEST_CASE("the last piece ends with the sleep") {
  CHECK(SleepPieces(kLeft, 7).Seconds() == 7);
  CHECK(PieceAt(kLeft, 9 * kHour, 9 * kHour - 450).Seconds() == 450);
  CHECK(SleepPieces(kLeft, 0).AreOver());
}

TEST_CASE("a mark of both kinds, or one that the sleep begins at, cuts once") {
  const int64_t midnight = SecondsFromTm(LocalTime(2026, 11, 22));
  CHECK(PieceAt(midnight, kHour, 0).Seconds() == 60);
  CHECK(PieceAt(midnight, kHour, 600).Seconds() == 300);
  CHECK(PieceAt(midnight, 3 * kHour, 2 * kHour).Seconds() == 600);
}

TEST_CASE("a piece belongs to the cell of its middle") {
  const SleepPieces first(kLeft, 9 * kHour);
  CHECK(first.Cell() == RateCell{6, 71, 0});
  CHECK(first.ClockMarkOfWeek() == 1006);
  // Two and a half hours away is 02:17:30, behind the middle of the piece from 02:10 on.
  const int64_t tenPastTwo = SecondsFromTm(LocalTime(2026, 11, 22, 2, 10)) - kLeft;
  CHECK(PieceAt(kLeft, 9 * kHour, tenPastTwo).Cell() == RateCell{0, 6, 4});
  CHECK(PieceAt(kLeft, 9 * kHour, tenPastTwo + 600).Cell() == RateCell{0, 7, 5});
}

TEST_CASE("every piece lies within the cell of its middle, for all seconds of ten minutes") {
  for (int64_t suspend = kLeft; suspend < kLeft + 600; ++suspend) {
    for (SleepPieces pieces(suspend, 9 * kDay); !pieces.AreOver(); pieces.Next()) {
      const int64_t middle = suspend + pieces.Start() + pieces.Seconds() / 2;
      REQUIRE(pieces.Cell() == CellOf(suspend, middle));
    }
  }
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
