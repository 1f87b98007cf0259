#include "controller/guards.h"

#include <doctest/doctest.h>

#include <cstdint>
#include <ostream>
#include <string>

#include "base/process_flags.h"
#include "controller/engine.h"
#include "fakes/clock_fake.h"
#include "fakes/driver_fake.h"
#include "fakes/journal.h"
#include "fakes/machine.h"
#include "fakes/power_fake.h"
#include "power/open_driver_device.h"
#include "support/calls.h"
#include "support/local_times.h"

namespace dozewell {
namespace {

// A machine that wakes, with its driver open. It was suspended at 18:00 on 2026-11-21.
struct WakingMachine {
  fakes::Machine machine;

  WakingMachine() {
    OpenDriverDevice();
    engine.suspendTime = LocalTime(2026, 11, 21, 18);
    Sleep(0);
  }

  void Sleep(int32_t seconds) {
    tm now = engine.suspendTime;
    AddSecondsToTime(&now, seconds);
    fakes::SetTime(now);
    fakes::TakeJournal();
  }
  void SetTimer(bool expired, uint32_t status) {
    fakes::driver.timer.words = {0, expired ? 0xC8000343 : 0x88000343};
    fakes::driver.previousSleepStatus = status;
  }
};

struct Answer {
  bool answer;
  Calls calls;

  bool operator==(const Answer&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Answer& answer) {
  return stream << (answer.answer ? "true" : "false") << answer.calls;
}

Answer Ask(bool (*guard)(const SMEventData*)) {
  fakes::TakeJournal();
  const bool answer = guard(nullptr);
  return {answer, fakes::TakeJournal()};
}

// The answer as a guard writes it to the debugger.
std::string Traced(bool answer) { return answer ? "trace true\n" : "trace false\n"; }

Answer GoingToS3(bool answer, const std::string& status) {
  return {answer,
          {"trace GImpl_GoingToS3: ", "driver: read timer", "driver: read previous sleep status",
           "report 4 GetPreviousSleepStatus " + status + "\n", Traced(answer)}};
}

// On a machine on AC.
Answer GoingToS4(bool answer, const std::string& seconds, const std::string& haSeconds) {
  return {
      answer,
      {"trace GImpl_GoingToS4: ", "power: power source", "power: get active",
       "power: read balanced AC hibernate", "driver: read previous sleep status", Traced(answer),
       "trace SuspendDuration = " + seconds + " sec, HA = " + haSeconds + " sec\n"}};
}

}  // namespace

TEST_CASE("an expired timer and its sleep status make a timer wake") {
  struct Row {
    bool expired;
    uint32_t status;
    bool answer;
  };
  const Row rows[] = {
      {true, 5, true},   {true, 4, false},  {true, 0, false},  {true, 6, false},
      {false, 5, false}, {false, 4, false}, {false, 0, false}, {true, 0x80000005, false},
  };
  for (const Row& row : rows) {
    WakingMachine wake;
    wake.SetTimer(row.expired, row.status);
    CAPTURE(row.status);
    CHECK(Ask(GImpl_GoingToS3) ==
          GoingToS3(row.answer, std::to_string(static_cast<int32_t>(row.status))));
  }
}

TEST_CASE("the alarm's expiry is no timer wake") {
  WakingMachine wake;
  fakes::driver.timer.words = {0xC0000000, 0xB8000343};
  fakes::driver.previousSleepStatus = 5;
  CHECK(Ask(GImpl_GoingToS3) == GoingToS3(false, "5"));
}

TEST_CASE("without a previous sleep status the timer alone decides") {
  for (const bool expired : {true, false}) {
    WakingMachine wake;
    wake.SetTimer(expired, 4);
    fakes::driver.failer.firstFailing = 2;
    CHECK(Ask(GImpl_GoingToS3) == GoingToS3(expired, "0"));
  }
}

TEST_CASE("a timer that cannot be read has not expired, whatever the sleep status") {
  WakingMachine wake;
  wake.SetTimer(true, 5);
  fakes::driver.failer.firstFailing = 1;
  CHECK(Ask(GImpl_GoingToS3) == GoingToS3(false, "5"));
}

TEST_CASE("without a driver there is no timer wake, and the driver is asked all the same") {
  fakes::Machine machine;
  fakes::driver.timer.words = {0, 0xC8000343};
  fakes::driver.previousSleepStatus = 5;
  CHECK(Ask(GImpl_GoingToS3) ==
        Answer{false,
               {"trace GImpl_GoingToS3: ", "driver: read timer on no device",
                "driver: read previous sleep status on no device",
                "report 4 GetPreviousSleepStatus 0\n", "trace false\n"}});
}

TEST_CASE("debug logging tells how the timer wake was recognised") {
  struct Row {
    bool expired;
    int failing;
    const char* timer;
    const char* status;
    bool answer;
  };
  const Row rows[] = {
      {true, 0, "SleepType 1 bExpired 1 drvResult 1\n", "GetPreviousSleepStatus 5\n", true},
      {false, 0, "SleepType 1 bExpired 0 drvResult 1\n", "GetPreviousSleepStatus 5\n", false},
      {true, 1, "SleepType 1 bExpired 0 drvResult 0\n", "GetPreviousSleepStatus 5\n", false},
      {true, 2, "SleepType 1 bExpired 1 drvResult 1\n", "GetPreviousSleepStatus 0\n", true},
  };
  for (const Row& row : rows) {
    WakingMachine wake;
    DebugLogging = true;
    wake.SetTimer(row.expired, 5);
    fakes::driver.failer.firstFailing = row.failing;
    CHECK(Ask(GImpl_GoingToS3) ==
          Answer{row.answer,
                 {"trace GImpl_GoingToS3: ", "driver: read timer",
                  std::string("report 4 ") + row.timer, "driver: read previous sleep status",
                  std::string("report 4 ") + row.status, Traced(row.answer),
                  row.answer ? "report 4 GoingToS3 1" : "report 4 GoingToS3 0"}});
  }
}

TEST_CASE("a sleep of the timeout's length, up to a minute off, is the system's own wake") {
  struct Row {
    int32_t seconds;
    bool answer;
  };
  const Row rows[] = {
      {1739, false}, {1740, true}, {1741, true}, {1799, true},  {1800, true},
      {1801, true},  {1859, true}, {1860, true}, {1861, false}, {60, false},
  };
  for (const Row& row : rows) {
    WakingMachine wake;
    wake.Sleep(row.seconds);
    fakes::driver.previousSleepStatus = 4;
    CHECK(Ask(GImpl_GoingToS4) == GoingToS4(row.answer, std::to_string(row.seconds), "1800"));
  }
}

TEST_CASE("a clock that was set back over the suspend counts by its distance") {
  WakingMachine wake;
  wake.Sleep(-1800);
  fakes::driver.previousSleepStatus = 4;
  CHECK(Ask(GImpl_GoingToS4) == GoingToS4(true, "1800", "1800"));
}

TEST_CASE("only a sleep that went on into hibernation is the system's own wake") {
  for (const uint32_t status : {0U, 3U, 5U}) {
    WakingMachine wake;
    wake.Sleep(1800);
    fakes::driver.previousSleepStatus = status;
    CHECK(Ask(GImpl_GoingToS4) == GoingToS4(false, "1800", "1800"));
  }
}

TEST_CASE("without a previous sleep status the length of the sleep alone decides") {
  for (const int32_t seconds : {1860, 1861}) {
    WakingMachine wake;
    wake.Sleep(seconds);
    fakes::driver.previousSleepStatus = 5;
    fakes::driver.failer.firstFailing = 1;
    CHECK(Ask(GImpl_GoingToS4) == GoingToS4(seconds == 1860, std::to_string(seconds), "1800"));
  }
}

TEST_CASE("the timeout is that of the source that the machine runs on, AC when it is unknown") {
  struct Row {
    uint8_t lineStatus;
    const char* source;
    const char* haSeconds;
  };
  for (const Row& row : {Row{0, "DC", "900"}, Row{1, "AC", "1800"}, Row{255, "AC", "1800"}}) {
    WakingMachine wake;
    wake.Sleep(900);
    fakes::power.acLineStatus = row.lineStatus;
    fakes::driver.previousSleepStatus = 4;
    Answer expected = GoingToS4(row.lineStatus == 0, "900", row.haSeconds);
    expected.calls[3] = std::string("power: read balanced ") + row.source + " hibernate";
    CHECK(Ask(GImpl_GoingToS4) == expected);
  }
}

TEST_CASE("without a timeout, or with the timeout never, it is not the system's own wake") {
  const Answer never = GoingToS4(false, "0", "0");
  {
    WakingMachine wake;
    fakes::driver.previousSleepStatus = 4;
    fakes::power.values["balanced AC hibernate"] = 0;
    CHECK(Ask(GImpl_GoingToS4) == never);
  }
  // The power source, the active scheme, the timeout.
  for (int failing = 1; failing <= 3; ++failing) {
    WakingMachine wake;
    fakes::driver.previousSleepStatus = 4;
    fakes::power.failer.firstFailing = failing;
    Answer expected = never;
    expected.calls.erase(expected.calls.begin() + 1 + failing, expected.calls.begin() + 4);
    CAPTURE(failing);
    CHECK(Ask(GImpl_GoingToS4) == expected);
  }
}

TEST_CASE("a timeout of less than a minute counts as never") {
  WakingMachine wake;
  fakes::driver.previousSleepStatus = 4;
  fakes::power.values["balanced AC hibernate"] = 59;
  CHECK(Ask(GImpl_GoingToS4) == GoingToS4(false, "0", "0"));
}

TEST_CASE("the longest timeout's seconds are shown cut to 32 bits") {
  WakingMachine wake;
  wake.Sleep(1800);
  fakes::driver.previousSleepStatus = 4;
  fakes::power.values["balanced AC hibernate"] = 0xFFFFFFFF;
  CHECK(Ask(GImpl_GoingToS4) == GoingToS4(false, "1800", "-16"));
}

TEST_CASE("without a driver the timeout alone tells the system's own wake") {
  for (const int32_t seconds : {1800, 600}) {
    fakes::Machine machine;
    engine.suspendTime = LocalTime(2026, 11, 21, 18);
    fakes::SetTime(LocalTime(2026, 11, 21, 18, 0, seconds));
    Answer expected = GoingToS4(seconds == 1800, std::to_string(seconds), "1800");
    expected.calls[4] += " on no device";
    CHECK(Ask(GImpl_GoingToS4) == expected);
  }
}

TEST_CASE("debug logging tells how the system's own wake was recognised") {
  for (const uint32_t status : {4U, 5U}) {
    WakingMachine wake;
    DebugLogging = true;
    wake.Sleep(1801);
    fakes::driver.previousSleepStatus = status;
    Answer expected = GoingToS4(status == 4, "1801", "1800");
    expected.calls = Joined({expected.calls,
                             {"report 4 GetPreviousSleepStatus " + std::to_string(status) + "\n",
                              status == 4 ? "report 4 GoingToS4 1\n" : "report 4 GoingToS4 0\n",
                              "report 4 SuspendDuration = 1801 sec, HA = 1800 sec\n"}});
    CHECK(Ask(GImpl_GoingToS4) == expected);
  }
}

TEST_CASE(
    "a resume is real when it is neither wake, and the second is not asked for a timer wake") {
  const Calls real = {"trace GImpl_RealActivate\n"};
  WakingMachine wake;
  wake.Sleep(1800);
  wake.SetTimer(true, 5);
  CHECK(Ask(GImpl_RealActivate) == Answer{false, Joined({real, GoingToS3(true, "5").calls})});
  wake.SetTimer(true, 4);
  CHECK(Ask(GImpl_RealActivate) == Answer{false, Joined({real, GoingToS3(false, "4").calls,
                                                         GoingToS4(true, "1800", "1800").calls})});
  wake.SetTimer(false, 5);
  CHECK(Ask(GImpl_RealActivate) == Answer{true, Joined({real, GoingToS3(false, "5").calls,
                                                        GoingToS4(false, "1800", "1800").calls})});
}

TEST_CASE("guards ignore the event and change nothing") {
  WakingMachine wake;
  wake.Sleep(1800);
  wake.SetTimer(true, 5);
  engine.nextSleepTime = LocalTime(2026, 11, 22, 8);
  engine.nextHAMinutes = 7;
  const SMEventData event(SMEvent::Activating);
  const tm suspended = engine.suspendTime;
  CHECK(GImpl_GoingToS3(&event));
  CHECK_FALSE(GImpl_GoingToS4(&event));
  CHECK_FALSE(GImpl_RealActivate(&event));
  CHECK(engine.suspendTime == suspended);
  CHECK(engine.nextSleepTime == LocalTime(2026, 11, 22, 8));
  CHECK(engine.nextHAMinutes == 7);
  CHECK(fakes::driver.timer.words[1] == 0xC8000343);
}

}  // namespace dozewell
