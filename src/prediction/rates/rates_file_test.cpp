#include "prediction/rates/rates_file.h"

#include <doctest/doctest.h>

#include <limits>
#include <memory>

#include "base/file.h"
#include "prediction/time_line.h"
#include "support/sleeps.h"
#include "support/temp_folder.h"

namespace dozewell {
namespace {

std::unique_ptr<RatesState> StateAfterSleeps() {
  auto state = std::make_unique<RatesState>();
  for (int day = 0; day < 5; ++day) {
    state->Take(Suspend, kEvening + day * kDay);
    state->Take(Activating, kEvening + day * kDay + 9 * kHour + 7 * day);
  }
  state->Take(Suspend, kEvening + 5 * kDay);
  return state;
}

}  // namespace

TEST_CASE("a state comes back from its file as it was") {
  const auto state = StateAfterSleeps();
  const auto read = ReadRatesFile(RatesFileOf(*state));
  REQUIRE(read);
  CHECK(*read == *state);
}

TEST_CASE("the file of rates has a header of 16 bytes and one size") {
  CHECK(RatesFileOf(RatesState()).size() == 49744);
}

TEST_CASE("a file with any one bit changed is no good") {
  const std::vector<unsigned char> file = RatesFileOf(*StateAfterSleeps());
  for (size_t position = 0; position < file.size(); position += position < 64 ? 1 : 997) {
    std::vector<unsigned char> damaged = file;
    damaged[position] ^= 0x10;
    CHECK(ReadRatesFile(damaged) == nullptr);
  }
}

TEST_CASE("a file of another size is no good") {
  std::vector<unsigned char> file = RatesFileOf(*StateAfterSleeps());
  file.push_back(0);
  CHECK(ReadRatesFile(file) == nullptr);
  file.resize(file.size() - 2);
  CHECK(ReadRatesFile(file) == nullptr);
  CHECK(ReadRatesFile({}) == nullptr);
}

TEST_CASE("a file with numbers that no learning gives is no good") {
  const auto isRefused = [](auto change) {
    RatesState state;
    change(state);
    return ReadRatesFile(RatesFileOf(state)) == nullptr;
  };
  constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
  CHECK_FALSE(isRefused([](RatesState&) {}));
  CHECK(isRefused([](RatesState& state) { state.learnt.secondsAway[7] = -1; }));
  CHECK(isRefused(
      [](RatesState& state) { state.learnt.returns[7] = std::numeric_limits<float>::infinity(); }));
  CHECK(isRefused([](RatesState& state) { state.learnt.idleCount = kNotANumber; }));
  CHECK(isRefused([](RatesState& state) { state.learnt.idleSeconds = -1; }));
  CHECK(isRefused([](RatesState& state) { state.learnt.sleeps = -1; }));
  CHECK(isRefused([](RatesState& state) { state.learnt.sleeps = INT64_MAX; }));
  CHECK(isRefused([](RatesState& state) { state.learnt.lastResume = kLastSecond + 1; }));
  CHECK(isRefused([](RatesState& state) { state.suspend = -2; }));
  CHECK(isRefused([](RatesState& state) { state.newest = INT64_MAX; }));
  CHECK(isRefused([](RatesState& state) { state.factors.base = 0; }));
  CHECK(isRefused([](RatesState& state) { state.factors.away[9] = kNotANumber; }));
  CHECK(isRefused([](RatesState& state) { state.factors.clockWide[71] = -1; }));
  CHECK(isRefused([](RatesState& state) { state.factors.clock[0] = 1e16; }));
  CHECK(isRefused([](RatesState& state) { state.factors.kindWide[143] = 0; }));
  CHECK(isRefused([](RatesState& state) { state.factors.kind[72] = kNotANumber; }));
  CHECK(isRefused([](RatesState& state) { state.factors.day[6] = 0; }));
  CHECK(isRefused([](RatesState& state) { state.factors.local[719] = 0; }));
}

TEST_CASE("a state is saved and loaded") {
  const TempFolder folder;
  const std::wstring path = folder.File(kRatesFileName);
  const auto state = StateAfterSleeps();
  CHECK(LoadRates(path).state == nullptr);
  CHECK_FALSE(LoadRates(path).isUnread);
  CHECK(SaveRates(*state, path, /*isOfUnreadFile=*/false));
  const LoadedRates loaded = LoadRates(path);
  REQUIRE(loaded.state);
  CHECK(*loaded.state == *state);
  CHECK_FALSE(loaded.isUnread);
}

TEST_CASE("a file that could not be read is not written over while it is there") {
  const TempFolder folder;
  const std::wstring path = folder.File(kRatesFileName);
  REQUIRE(WriteWholeFile(path, "kept", 4));
  CHECK_FALSE(SaveRates(RatesState(), path, /*isOfUnreadFile=*/true));
  CHECK(ReadWholeFile(path)->size() == 4);
  RemoveFile(path);
  CHECK(SaveRates(RatesState(), path, /*isOfUnreadFile=*/true));
}

}  // namespace dozewell
