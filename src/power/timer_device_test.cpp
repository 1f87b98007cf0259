#include "power/timer_device.h"

#include <doctest/doctest.h>

#include <cstdint>
#include <utility>

#include "fakes/clock_fake.h"
#include "fakes/driver_fake.h"
#include "fakes/machine.h"
#include "fakes/power_fake.h"
#include "fakes/settings_fake.h"
#include "fakes/wake_timer_fake.h"
#include "power/open_driver_device.h"
#include "settings/setting_names.h"

namespace dozewell {
namespace {

using fakes::systemTimer;

constexpr int64_t kEvening = 1795284000;  // 2026-11-21 18:00
constexpr int64_t kMinute = 60;
constexpr int64_t kHour = 60 * kMinute;
constexpr uint32_t kNightMinutes = 840;
constexpr int64_t kMorning = kEvening + 14 * kHour;  // when a timer armed for a night is due

// A machine without the driver, on which the system's timer is in its place. It is evening.
struct TimerMachine {
  fakes::Machine machine;

  TimerMachine() {
    fakes::driver.present = false;
    fakes::settings.current.predictorValues[{kPredictorSection, kWakeTimerName}] =
        fakes::Text("windows");
    fakes::power.values["balanced AC wake timers"] = 1;
    OpenDriverDevice();
    PassTo(kEvening);
    systemTimer.calls.clear();
  }

  static void PassTo(int64_t utcSeconds) { fakes::clock.utcSeconds = utcSeconds; }
};

void ArmForNight() {
  REQUIRE(DriverFuncCall.ArmDriverTimerDuration(TimerDurationPayload(kNightMinutes)));
}

TimerRecord Record() {
  TimerRecord record = {{1, 2}};
  REQUIRE(ReadDriverTimer(record));
  return record;
}

bool HasExpired() { return (Record().words[kDurationWord] & kTimerExpired) != 0; }

// Sleeps with the timer armed for the morning, is woken at one time and asked at another.
bool HasExpiredAfterSleep(int64_t fellAsleep, int64_t woke, int64_t asked) {
  TimerMachine machine;
  ArmForNight();
  fakes::SetLastSleep(fellAsleep, woke);
  TimerMachine::PassTo(asked);
  return HasExpired();
}

Calls Armed(int64_t due) { return {"arm " + std::to_string(due)}; }
const Calls kNothing;
const Calls kCancelled = {"cancel"};

}  // namespace

TEST_CASE("a duration in word 1 arms the system's timer for a time of the calendar") {
  TimerMachine machine;
  CHECK(Record() == TimerRecord{});
  ArmForNight();
  CHECK(systemTimer.calls == Armed(kMorning));
  CHECK(Record() == TimerRecord{{0, 0x88000348}});
}

TEST_CASE("the record shows the minutes that are left, rounded up") {
  TimerMachine machine;
  fakes::SetLastSleep(kEvening - kHour, kEvening - kMinute);
  ArmForNight();
  const std::pair<int64_t, uint32_t> rows[] = {
      {kEvening + 1, 840},    {kEvening + 59, 840}, {kEvening + kMinute, 839},
      {kMorning - kHour, 60}, {kMorning - 61, 2},   {kMorning - kMinute, 1},
      {kMorning - 1, 1},      {kMorning, 0},        {kMorning + 5 * kMinute, 0}};
  for (const auto& [now, minutes] : rows) {
    TimerMachine::PassTo(now);
    CHECK(Record() == TimerRecord{{0, 0x88000000 + minutes}});
  }
  CHECK(systemTimer.calls == Armed(kMorning));
}

TEST_CASE("a clock that was set far back or cannot be read shows no more minutes than fit") {
  TimerMachine machine;
  ArmForNight();
  for (const int64_t now : {int64_t{0}, int64_t{-1}}) {
    TimerMachine::PassTo(now);
    CHECK(Record() == TimerRecord{{0, 0x880FFFFF}});
  }
  TimerMachine::PassTo(-1);
  CHECK_FALSE(DriverFuncCall.ArmDriverTimerDuration(TimerDurationPayload(1)));
}

TEST_CASE("word 0, and word 1 with a time of the calendar, are kept and wake nothing") {
  TimerMachine machine;
  CHECK(DriverFuncCall.ArmDriverTimerAlarm(0x01AB5986));
  CHECK(DriverFuncCall.ArmDriverTimerAlarm(TimerDurationPayload(5)));
  CHECK(DriverFuncCall.ArmDriverTimerDuration(0x01AB5986));
  CHECK(Record() == TimerRecord{{0x88000005, 0x81AB5986}});
  CHECK(systemTimer.calls == kNothing);
}

TEST_CASE("a write arms only with its flag and minutes, and with word 0 as it was") {
  struct Row {
    TimerRecord written;
    bool arms;
  };
  for (const Row& row : {Row{{{0x80000007, 0x88000001}}, true},
                         {{{0x80000007, 0x880FFFFF}}, true},
                         {{{0x80000007, 0xF8000001}}, true},
                         {{{0x80000007, 0x08000001}}, false},
                         {{{0x80000007, 0x80000001}}, false},
                         {{{0x80000007, 0x88000000}}, false},
                         {{{0x80000007, 0x8FF00000}}, false},
                         {{{0x80000006, 0x88000001}}, false},
                         {{{0x00000007, 0x88000001}}, false}}) {
    TimerMachine machine;
    CHECK(WriteDriverTimer({{0x80000007, 0}}));
    CHECK(WriteDriverTimer(row.written));
    const int64_t minutes = row.written.words[1] & kTimerDurationMinutes;
    CHECK(systemTimer.calls == (row.arms ? Armed(kEvening + minutes * kMinute) : kNothing));
  }
}

TEST_CASE("a write that changes word 0 leaves the timer alone") {
  TimerMachine machine;
  ArmForNight();
  TimerMachine::PassTo(kEvening + kHour);
  CHECK(DriverFuncCall.ArmDriverTimerAlarm(0x01AB5986));
  CHECK(Record() == TimerRecord{{0x81AB5986, 0x8800030C}});
  CHECK(systemTimer.calls == Armed(kMorning));
}

TEST_CASE("a write that takes word 1's flag away cancels, whatever it does to word 0") {
  for (const uint32_t alarm : {0U, 0x80000001U}) {
    TimerMachine machine;
    ArmForNight();
    CHECK(WriteDriverTimer({{alarm, 0x08000348}}));
    CHECK(systemTimer.calls == Joined({Armed(kMorning), kCancelled}));
    CHECK(Record() == TimerRecord{{alarm, 0x08000000}});
  }
}

TEST_CASE("switching on again arms nothing old") {
  TimerMachine machine;
  ArmForNight();
  CHECK(WriteDriverTimer({{0, 0x08000348}}));
  TimerRecord record = Record();
  record.words[kDurationWord] |= kTimerEnabled;
  CHECK(WriteDriverTimer(record));
  CHECK(systemTimer.calls == Joined({Armed(kMorning), kCancelled}));
  CHECK(Record() == TimerRecord{{0, 0x88000000}});
}

TEST_CASE("a time of the calendar in the place of the duration cancels it") {
  TimerMachine machine;
  ArmForNight();
  CHECK(DriverFuncCall.ArmDriverTimerDuration(0x01AB5986));
  CHECK(systemTimer.calls == Joined({Armed(kMorning), kCancelled}));
  CHECK(Record() == TimerRecord{{0, 0x81AB5986}});
}

TEST_CASE("a new duration takes the place of the old one") {
  TimerMachine machine;
  ArmForNight();
  TimerMachine::PassTo(kEvening + kHour);
  CHECK(DriverFuncCall.ArmDriverTimerDuration(TimerDurationPayload(kNightMinutes)));
  CHECK(systemTimer.calls == Joined({Armed(kMorning), Armed(kMorning + kHour)}));
}

TEST_CASE("the cancelling of the controller cancels what is armed, once") {
  TimerMachine machine;
  CancelStandInTimer();
  CHECK(systemTimer.calls == kNothing);
  ArmForNight();
  CancelStandInTimer();
  CancelStandInTimer();
  CHECK(systemTimer.calls == Joined({Armed(kMorning), kCancelled}));
  CHECK(Record() == TimerRecord{{0, 0x88000000}});
  TimerMachine::PassTo(kMorning);
  fakes::SetLastSleep(kEvening, kMorning);
  CHECK_FALSE(HasExpired());
}

TEST_CASE("the timer has expired when the machine slept until it was due and then woke") {
  struct Row {
    int64_t fellAsleep;
    int64_t woke;
    int64_t asked;
    bool expired;
  };
  constexpr int64_t kDue = kMorning;
  for (const Row& row : {
           Row{kEvening, kDue, kDue, true},
           {kEvening, kDue, kDue + kHour, true},
           {kEvening, kDue + 120, kDue + 120, true},
           {kEvening, kDue + 121, kDue + 121, false},
           {kEvening, kDue + 2 * kHour, kDue + 2 * kHour, false},
           {kDue - 1, kDue, kDue, true},
           {kDue, kDue + 1, kDue + 1, false},
           {kDue + 1, kDue + 2, kDue + 2, false},
           {kEvening, kDue - 2, kDue, true},
           {kEvening, kDue - 3, kDue, false},
           {kEvening, kDue - kHour, kDue, false},
           // It was not yet due when it was asked.
           {kEvening, kDue - 1, kDue - 1, false},
           // It falls asleep while it is asked.
           {kDue + 5, kEvening, kDue + 5, false},
       }) {
    CAPTURE(row.fellAsleep - kDue);
    CAPTURE(row.woke - kDue);
    CAPTURE(row.asked - kDue);
    CHECK(HasExpiredAfterSleep(row.fellAsleep, row.woke, row.asked) == row.expired);
  }
}

TEST_CASE("it has expired for one resume, however often that is asked about") {
  TimerMachine machine;
  ArmForNight();
  fakes::SetLastSleep(kEvening, kMorning);
  TimerMachine::PassTo(kMorning + 1);
  CHECK(HasExpired());
  CHECK(HasExpired());
  fakes::SetLastSleep(kMorning + 30, kMorning + 60);
  TimerMachine::PassTo(kMorning + 60);
  CHECK_FALSE(HasExpired());
  // Nor does it when the system repeats what it said before.
  fakes::SetLastSleep(kEvening, kMorning);
  CHECK_FALSE(HasExpired());
}

TEST_CASE("a timer that fires while the machine is awake ends no later sleep") {
  TimerMachine machine;
  fakes::SetLastSleep(kEvening - kHour, kEvening - kMinute);
  ArmForNight();
  TimerMachine::PassTo(kMorning);
  CHECK_FALSE(HasExpired());
  fakes::SetLastSleep(kMorning + kMinute, kMorning + 2 * kMinute);
  TimerMachine::PassTo(kMorning + 2 * kMinute);
  CHECK_FALSE(HasExpired());
}

TEST_CASE("each arming clears what has expired") {
  TimerMachine machine;
  ArmForNight();
  fakes::SetLastSleep(kEvening, kMorning);
  TimerMachine::PassTo(kMorning);
  CHECK(HasExpired());
  CHECK(DriverFuncCall.ArmDriverTimerDuration(TimerDurationPayload(10)));
  CHECK(Record() == TimerRecord{{0, 0x8800000A}});
}

TEST_CASE("a flag of expiry in what is written means nothing") {
  TimerMachine machine;
  CHECK(WriteDriverTimer({{0, 0xF8000000}}));
  CHECK(Record() == TimerRecord{{0, 0xB8000000}});
}

TEST_CASE("where the last sleep is not known, only a read right after the due time says expired") {
  for (const auto& [asked, expired] : {std::pair{kMorning - 1, false},
                                       {kMorning, true},
                                       {kMorning + 120, true},
                                       {kMorning + 121, false}}) {
    TimerMachine machine;
    ArmForNight();
    TimerMachine::PassTo(asked);
    CHECK(HasExpired() == expired);
    // The next question may be about the next resume.
    CHECK_FALSE(HasExpired());
  }
}

TEST_CASE("where no timer may wake the machine it has ended no sleep") {
  TimerMachine machine;
  ArmForNight();
  fakes::power.values["balanced AC wake timers"] = 0;
  fakes::SetLastSleep(kEvening, kMorning + 30);
  TimerMachine::PassTo(kMorning + 30);
  CHECK_FALSE(HasExpired());
}

TEST_CASE("a sleep that is not known any more has not been ended by the timer") {
  TimerMachine machine;
  ArmForNight();
  fakes::SetLastSleep(kEvening, kMorning);
  TimerMachine::PassTo(kMorning);
  CHECK(HasExpired());
  systemTimer.lastSleep.reset();
  CHECK_FALSE(HasExpired());
}

TEST_CASE("a timer that the system cannot arm fails the write, and none is left armed") {
  TimerMachine machine;
  ArmForNight();
  systemTimer.arming = WakeTimerArming::kFailed;
  CHECK_FALSE(DriverFuncCall.ArmDriverTimerDuration(TimerDurationPayload(10)));
  CHECK(systemTimer.calls == Joined({Armed(kMorning), Armed(kEvening + 10 * kMinute), kCancelled}));
  CHECK_FALSE(systemTimer.due);
  CHECK(Record() == TimerRecord{{0, 0x88000000}});
  CHECK(DeviceStandIn.load()->CanWake());
}

TEST_CASE("a timer that will not wake the machine counts as none, until one does") {
  TimerMachine machine;
  const auto state = [] { return fakes::settings.current.values[kWindowsTimerStateName]; };
  CHECK(state() == fakes::Number32(1));
  systemTimer.arming = WakeTimerArming::kCannotWake;
  CHECK_FALSE(DriverFuncCall.ArmDriverTimerDuration(TimerDurationPayload(10)));
  CHECK_FALSE(systemTimer.due);
  CHECK_FALSE(DeviceStandIn.load()->CanWake());
  CHECK(state() == fakes::Number32(2));
  systemTimer.arming = WakeTimerArming::kArmed;
  ArmForNight();
  CHECK(DeviceStandIn.load()->CanWake());
  CHECK(state() == fakes::Number32(1));
}

TEST_CASE("how the machine last slept is not told, and no other control is known") {
  TimerMachine machine;
  uint32_t status = 9;
  CHECK_FALSE(ReadPreviousSleepStatus(status));
  CHECK(status == 0);
  TimerRecord record = {{1, 2}};
  CHECK_FALSE(CallDriver(0x9C40240C, nullptr, 0, &record, sizeof(record)));
  CHECK_FALSE(CallDriver(kReadTimerControl, nullptr, 0, &record, 4));
  CHECK_FALSE(CallDriver(kWriteTimerControl, &record, 4, nullptr, 0));
  CHECK(record == TimerRecord{{1, 2}});
}

TEST_CASE("closing leaves no timer armed, and a late caller finds no device") {
  TimerMachine machine;
  ArmForNight();
  IDeviceStandIn* const standIn = DeviceStandIn;
  CloseDriverDevice();
  CHECK(systemTimer.calls == Joined({Armed(kMorning), kCancelled, {"close"}}));
  CHECK_FALSE(fakes::settings.current.values.contains(kWindowsTimerStateName));
  TimerRecord record;
  CHECK_FALSE(standIn->PerformControl(kReadTimerControl, nullptr, 0, &record, sizeof(record)));
  standIn->CancelTimer();
  CHECK_FALSE(standIn->CanWake());
  standIn->Close();
  CHECK(systemTimer.calls.size() == 3);
}

TEST_CASE("what one run of the service has left is unknown to the next") {
  TimerMachine machine;
  ArmForNight();
  CHECK(WriteDriverTimer({{0x80000007, 0x88000348}}));
  CloseDriverDevice();
  OpenDriverDevice();
  CHECK(Record() == TimerRecord{});
}

}  // namespace dozewell
