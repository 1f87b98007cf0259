#include "prediction/rates/return_forecast.h"

#include <doctest/doctest.h>

#include <vector>

#include "prediction/rates/exponential.h"
#include "prediction/rates/sleep_pieces.h"
#include "support/sleeps.h"

namespace dozewell {
namespace {

// Rates that differ in each cell, all of them small.
RateFactors MotleyFactors() {
  RateFactors factors;
  factors.base = 1e-7;
  double factor = 1;
  for (double& of : factors.local) of = factor += 0.01;
  factor = 1;
  for (double& of : factors.kind) of = factor += 0.02;
  factor = 1;
  for (double& of : factors.day) of = factor += 0.1;
  return factors;
}

std::vector<ForecastPiece> PiecesOf(const RateFactors& factors, int64_t suspend) {
  std::vector<ForecastPiece> pieces;
  ForecastReturn(ReturnRates(factors), suspend,
                 [&](const ForecastPiece& piece) { pieces.push_back(piece); });
  return pieces;
}

}  // namespace

TEST_CASE("a forecast loses in each piece what its rate says") {
  RateFactors factors;
  factors.base = 1e-5;
  const std::vector<ForecastPiece> pieces = PiecesOf(factors, kEvening);
  CHECK(pieces[0].start == 0);
  CHECK(pieces[0].seconds == 60);
  CHECK(pieces[0].stillAway == 1);
  CHECK(pieces[0].returning == 1 - Exponential(-60e-5));
  CHECK(pieces[1].stillAway == 1 - pieces[0].returning);
  CHECK(pieces[1].start == 60);
  CHECK(static_cast<double>(pieces.back().start) + pieces.back().seconds == 8 * 86400);
}

TEST_CASE("a forecast ends when a return is all but certain") {
  RateFactors factors;
  factors.base = 1e-3;
  // The probability falls below 0.0001 after 9,211 seconds.
  const std::vector<ForecastPiece> pieces = PiecesOf(factors, kEvening);
  CHECK(pieces.back().start == 9000);
  CHECK(pieces.back().stillAway >= 0.0001);
  CHECK(pieces.back().stillAway - pieces.back().returning < 0.0001);
}

TEST_CASE("a forecast has the pieces that a sleep is learnt in, each at its own rate") {
  const RateFactors factors = MotleyFactors();
  for (const int64_t suspend : {kEvening, kEvening + 7, kEvening + 3 * kHour - 1,
                                kEvening + 5 * kDay + 599, kEvening + 11 * kHour + 601}) {
    SleepPieces expected(suspend, kLongestSleepSeconds);
    double stillAway = 1;
    for (const ForecastPiece& piece : PiecesOf(factors, suspend)) {
      const auto seconds = static_cast<double>(expected.Seconds());
      const double after = stillAway * Exponential(-factors.RateOf(expected.Cell()) * seconds);
      REQUIRE(piece.start == expected.Start());
      REQUIRE(piece.seconds == seconds);
      REQUIRE(piece.stillAway == stillAway);
      REQUIRE(piece.returning == stillAway - after);
      stillAway = after;
      expected.Next();
    }
    CHECK(expected.AreOver());
  }
}

TEST_CASE("a forecast is the same whether its rates are computed before or as they are asked for") {
  const RateFactors factors = MotleyFactors();
  for (const int64_t suspend : {kEvening, kEvening + 7, kEvening + 5 * kDay + 599}) {
    const std::vector<ForecastPiece> expected = PiecesOf(factors, suspend);
    size_t count = 0;
    ForecastReturn(RatesAsAsked(factors), suspend, [&](const ForecastPiece& piece) {
      REQUIRE(count < expected.size());
      REQUIRE(piece.start == expected[count].start);
      REQUIRE(piece.seconds == expected[count].seconds);
      REQUIRE(piece.stillAway == expected[count].stillAway);
      REQUIRE(piece.returning == expected[count].returning);
      ++count;
    });
    CHECK(count == expected.size());
  }
}

}  // namespace dozewell
