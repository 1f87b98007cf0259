// What may happen while the optimizer's thread saves the history.

#include <doctest/doctest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "base/file.h"
#include "base/lock.h"
#include "controller/controller.h"
#include "controller/state_machine/state_machine.h"
#include "fakes/clock_fake.h"
#include "fakes/lock_fake.h"
#include "fakes/machine.h"
#include "prediction/history_file.h"
#include "prediction/history_recorder.h"
#include "support/local_times.h"

namespace dozewell {
namespace {

constexpr int64_t kStart = 1795248309;  // 2026-11-21 08:05:09, when the controller starts

// A machine whose controller runs: one record is in the history's file, one is pending.
struct Saving {
  fakes::Machine machine;

  Saving() {
    StartController();
    AH_SaveHistory();
    AppendToHistory(kStart + 60, /*asleep=*/true);
    fakes::SetTime(LocalTime(2026, 11, 21, 9));
  }
  std::vector<int64_t> Times() const {
    std::vector<int64_t> times;
    const auto file = ReadWholeFile(machine.HistoryFile());
    for (const HistoryRecord& record : IncreasingRecords(file.value())) {
      times.push_back(static_cast<int64_t>(record.time) - kStart);
    }
    return times;
  }
};

// Saves the history, and has something happen at the wanted step of it, from 0. A step is a look at
// the clock, a lock before it is taken, or a lock after it was freed. Gives the number of steps.
int SaveWith(int wantedStep, const std::function<void()>& happening) {
  int steps = 0;
  const auto step = [&] {
    if (steps++ != wantedStep) return;
    const fakes::Locks hooks = std::exchange(fakes::locks, {});
    happening();
    fakes::locks = hooks;
  };
  fakes::clock.whileUtcRead = step;
  fakes::locks.beforeTaking = [&](const Lock&) { step(); };
  fakes::locks.afterFreeing = [&](const Lock&) { step(); };
  AH_SaveHistory();
  fakes::clock.whileUtcRead = [] {};
  fakes::locks = {};
  return steps;
}

int StepsOfASave() {
  const Saving saving;
  return SaveWith(-1, [] {});
}

void Post(SMEvent event) { PostEvent(std::make_unique<SMEventData>(event)); }

// Has an event that works on the history come at each step. One that comes while its lock is taken
// has to wait until the save is over, and comes then.
void AtEachStep(SMEvent event, const std::function<void(const Saving&)>& check) {
  int waits = 0;
  int goesFirst = 0;
  const int steps = StepsOfASave();
  for (int step = 0; step < steps; ++step) {
    CAPTURE(step);
    const Saving saving;
    bool waited = false;
    SaveWith(step, [&] {
      waited = fakes::IsTaken(EngineLock);
      if (!waited) Post(event);
    });
    if (waited) Post(event);
    ++(waited ? waits : goesFirst);
    check(saving);
  }
  CHECK(waits > 0);
  CHECK(goesFirst > 0);
}

}  // namespace

TEST_CASE("what is recorded at any step of a save waits for nothing and is saved then or later") {
  const int steps = StepsOfASave();
  CHECK(steps > 4);
  for (int step = 0; step < steps; ++step) {
    CAPTURE(step);
    const Saving saving;
    SaveWith(step, [] { AppendToHistory(kStart + 120, /*asleep=*/false); });
    AH_SaveHistory();
    CHECK(saving.Times() == std::vector<int64_t>{0, 60, 120});
  }
}

TEST_CASE("a shutdown at any step of the optimizer's save loses no record") {
  AtEachStep(SMEvent::ShuttingDown, [](const Saving& saving) {
    CHECK(saving.Times() == std::vector<int64_t>{0, 60, 3291});
  });
}

TEST_CASE("a reset at any step of the optimizer's save leaves no record") {
  AtEachStep(SMEvent::ResetHistory, [](const Saving& saving) {
    AH_SaveHistory();
    CHECK(saving.Times().empty());
  });
}

TEST_CASE("a suspend at any step of the optimizer's save finds the controller's lock free") {
  const int steps = StepsOfASave();
  for (int step = 0; step < steps; ++step) {
    CAPTURE(step);
    const Saving saving;
    SaveWith(step, [] {
      CHECK_FALSE(fakes::IsTaken(ControllerLock));
      Post(SMEvent::Suspend);
    });
    AH_SaveHistory();
    CHECK(saving.Times() == std::vector<int64_t>{0, 60, 3291});
  }
}

}  // namespace dozewell
