#include "prediction/rates/lasting_rates_predictor.h"

#include <doctest/doctest.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/exception.h"
#include "base/file.h"
#include "fakes/machine.h"
#include "fakes/settings_fake.h"
#include "prediction/configurations_impl.h"
#include "prediction/history_recorder.h"
#include "prediction/rates/rates_file.h"
#include "support/sleeps.h"

namespace dozewell {
namespace {

TimeLineEvent EventAt(int64_t seconds, int32_t state) {
  TimeLineEvent event = {{}, state};
  TmFromSeconds(seconds, event.time);
  return event;
}

// A predictor that is started and stopped on a machine, as the controller does it.
struct Living {
  fakes::Machine machine;
  ConfigurationsImpl configuration;
  HistorianImpl historian;
  std::optional<LastingRatesPredictor> predictor;

  Living() { Start(); }
  void Start(KnownRates known = {}) {
    predictor.emplace(
        &configuration, &historian, [] { return true; }, KnownData(), std::move(known));
  }
  std::wstring RatesFile() const { return machine.Folder() + kRatesFileName; }
  const RatesState& State() const { return predictor->State(); }

  void Tell(int32_t state, int64_t time) { historian.NotifyListener(EventAt(time, state)); }
  // A sleep that the controller sees: recorded and told. What the predictor of slots refuses, the
  // controller logs.
  void Sleep(int64_t suspend, int64_t resume) {
    for (const auto& [time, state] : {std::pair{suspend, Suspend}, {resume, Activating}}) {
      AppendToHistory(time, state == Suspend);
      try {
        Tell(state, time);
      } catch (const FixedTextException&) {
        continue;
      }
    }
  }
  // A stop of the service, which stands in the history and is not told.
  void Stop(int64_t time) {
    AppendToHistory(time, /*asleep=*/true);
    AH_SaveHistory();
    Tell(ContainerStopped, time);
    predictor.reset();
  }
};

}  // namespace

TEST_CASE("rates that were saved are the same after a restart") {
  Living living;
  for (int day = 0; day < 4; ++day) {
    living.Sleep(kEvening + day * kDay, kEvening + day * kDay + 9 * kHour);
  }
  RatesState before = living.State();
  living.Stop(kEvening + 4 * kDay);
  living.Start();
  before.newest = kEvening + 4 * kDay;
  CHECK(living.State() == before);
}

TEST_CASE("a sleep goes on while the machine is shut down") {
  Living living;
  living.Sleep(kEvening, kEvening + 9 * kHour);
  living.Tell(ShuttingDown, kEvening + kDay);
  living.Tell(ContainerStopped, kEvening + kDay);
  living.predictor.reset();
  living.Start();
  living.Tell(Activating, kEvening + kDay + 9 * kHour);
  CHECK(living.State().learnt.sleeps == 2);
  CHECK(living.State().learnt.lastResume == kEvening + kDay + 9 * kHour);
}

TEST_CASE("without a file rates are learnt from the history, sleep by sleep") {
  Living living;
  RatesState expected;
  for (int day = 0; day < 4; ++day) {
    living.Sleep(kEvening + day * kDay, kEvening + day * kDay + 9 * kHour);
  }
  expected = living.State();
  living.Stop(kEvening + 4 * kDay);
  RemoveFile(living.RatesFile());
  living.Start();
  // The stop counts as a suspend there.
  expected.suspend = kEvening + 4 * kDay;
  expected.newest = kEvening + 4 * kDay;
  CHECK(living.State() == expected);
}

TEST_CASE("a damaged file is learnt anew from the history and replaced") {
  Living living;
  living.Sleep(kEvening, kEvening + 9 * kHour);
  living.Stop(kEvening + kDay);
  std::vector<unsigned char> file = ReadWholeFile(living.RatesFile()).value();
  file[1000] ^= 1;
  REQUIRE(WriteWholeFile(living.RatesFile(), file.data(), file.size()));
  living.Start();
  CHECK(living.State().learnt.sleeps == 1);
  living.Tell(ContainerStopped, kEvening + kDay);
  CHECK(ReadRatesFile(ReadWholeFile(living.RatesFile()).value()) != nullptr);
}

TEST_CASE("rates catch up with what was recorded after their file") {
  Living living;
  living.Sleep(kEvening, kEvening + 9 * kHour);
  living.Stop(kEvening + 10 * kHour);
  // What another predictor lived through, some of it saved and some of it pending.
  AppendToHistory(kEvening + 11 * kHour, /*asleep=*/false);
  AppendToHistory(kEvening + kDay, /*asleep=*/true);
  AH_SaveHistory();
  AppendToHistory(kEvening + kDay + 8 * kHour, /*asleep=*/false);
  living.Start();
  CHECK(living.State().learnt.sleeps == 2);
  CHECK(living.State().learnt.lastResume == kEvening + kDay + 8 * kHour);
  CHECK(living.State().newest == kEvening + kDay + 8 * kHour);
}

TEST_CASE("a stop of the service is no sleep for rates that have their file") {
  Living living;
  living.Sleep(kEvening, kEvening + 9 * kHour);
  living.Stop(kEvening + 10 * kHour);
  living.Start();
  living.Tell(Activating, kEvening + 11 * kHour);
  CHECK(living.State().learnt.sleeps == 1);
}

TEST_CASE("what the clock showed before it was set back is not learnt twice") {
  Living living;
  // For a while the clock is ten years ahead.
  living.Sleep(kEvening + 3650 * kDay, kEvening + 3650 * kDay + 9 * kHour);
  living.Sleep(kEvening, kEvening + 9 * kHour);
  living.Stop(kEvening + 10 * kHour);
  const int64_t sleeps = 2;
  for (int start = 0; start < 3; ++start) {
    living.Start();
    CHECK(living.State().learnt.sleeps == sleeps);
    CHECK(living.State().suspend == RatesState::kNone);
    CHECK(living.State().newest == kEvening + 3650 * kDay + 9 * kHour);
    living.Tell(ContainerStopped, kEvening + 10 * kHour);
    living.predictor.reset();
  }
}

TEST_CASE("a predictor that replaces another takes what that one knows and reads no history") {
  Living living;
  living.Sleep(kEvening, kEvening + 9 * kHour);
  KnownRates known = living.predictor->CopyOfKnown();
  const RatesState before = living.State();
  AppendToHistory(kEvening + kDay, /*asleep=*/true);
  living.predictor.reset();
  living.Start(std::move(known));
  CHECK(living.State() == before);
}

TEST_CASE("the predictor of slots goes on learning beside rates") {
  Living living;
  living.Sleep(kEvening, kEvening + 9 * kHour);
  living.Tell(ContainerStopped, kEvening + 9 * kHour);
  living.predictor.reset();
  CyclicProbabilityPredictor slots(&living.configuration, &living.historian);
  CHECK(slots.LoadState() == DataFileState::Loaded);
  // Tuesday 03:00 is a slot that was slept through.
  const int slot = (5 * 24 + 3) * 4;
  CHECK(slots.GetSlotProbability(slot) == 0.0F);
}

TEST_CASE("rates learn an event that the predictor of slots refuses") {
  Living living;
  living.Sleep(kEvening, kEvening + 9 * kHour);
  living.Tell(Suspend, kEvening + kDay);
  CHECK_THROWS_AS(living.Tell(Activating, kEvening + kDay), FixedTextException);
  CHECK(living.State().suspend == RatesState::kNone);
  CHECK(living.State().learnt.lastResume == kEvening + kDay);
}

TEST_CASE("when rates go, nobody listens") {
  Living living;
  CHECK(living.historian.HasListener());
  living.predictor.reset();
  CHECK_FALSE(living.historian.HasListener());
}

}  // namespace dozewell
