#include "ctl/check/nights.h"

#include <doctest/doctest.h>

#include <string>

namespace dozewell::ctl {
namespace {

constexpr int64_t kHour = 3600;
constexpr int64_t kEvening = 1795284000;  // 2026-11-21 18:00, UTC
constexpr int64_t kMorning = kEvening + 13 * kHour;
constexpr int64_t kMuchLater = kEvening + 200 * kHour;

LogEvent Logged(LogEventKind kind, int64_t time, WakeCause cause = WakeCause::Unknown) {
  static uint64_t record = 0;
  LogEvent event;
  event.record = ++record;
  event.time = time;
  event.kind = kind;
  event.cause = cause;
  return event;
}

LogEvent Explained(int64_t sleepTime, int64_t wakeTime, WakeCause cause) {
  LogEvent event = Logged(LogEventKind::Woke, wakeTime + 20, cause);
  event.sleepTime = sleepTime;
  event.wakeTime = wakeTime;
  return event;
}

ServiceEvent Heard(const std::string& text, int64_t time) { return {time, 4, text}; }

std::vector<ServiceEvent> NightOfService() {
  return {Heard("21/11/2026 8:0:0 - Activating", kEvening - 10 * kHour),
          Heard("21/11/2026 18:0:0 - Suspend", kEvening), Heard("Suspended", kEvening),
          Heard("22/11/2026 7:0:0 - Activating", kMorning + 2), Heard("Active", kMorning + 3)};
}

}  // namespace

TEST_CASE("a sleep and a resume that the service logged too are heard") {
  const Nights nights = CompareNights(
      {Logged(LogEventKind::Slept, kEvening + 3), Logged(LogEventKind::Woke, kMorning),
       Explained(kEvening + 3, kMorning, WakeCause::Device)},
      NightOfService(), kMuchLater);
  REQUIRE(nights.changes.size() == 2);
  CHECK(nights.changes[0].change == PowerChange::Sleep);
  CHECK(nights.changes[0].time == kEvening + 3);
  CHECK(nights.changes[0].isHeard);
  CHECK(nights.changes[1].change == PowerChange::Resume);
  CHECK(nights.changes[1].time == kMorning);
  CHECK(nights.changes[1].cause == WakeCause::Device);
  CHECK(nights.changes[1].isHeard);
  CHECK(nights.afterServiceWakes.wakes == 0);
  CHECK(nights.afterTimerResumes.wakes == 0);
}

TEST_CASE("a sleep and a resume that the service never heard of are told") {
  const int64_t nap = kEvening - 3 * kHour;
  const Nights nights =
      CompareNights({Logged(LogEventKind::Slept, nap), Logged(LogEventKind::Woke, nap + kHour),
                     Logged(LogEventKind::Slept, kEvening), Logged(LogEventKind::Woke, kMorning)},
                    NightOfService(), kMuchLater);
  REQUIRE(nights.changes.size() == 4);
  CHECK_FALSE(nights.changes[0].isHeard);
  CHECK_FALSE(nights.changes[1].isHeard);
  CHECK(nights.changes[2].isHeard);
  CHECK(nights.changes[3].isHeard);
}

TEST_CASE("events up to three minutes apart are of the same moment") {
  const auto isHeard = [](int64_t time) {
    return CompareNights({Logged(LogEventKind::Slept, time)}, NightOfService(), kMuchLater)
        .changes[0]
        .isHeard;
  };
  CHECK(isHeard(kEvening + 180));
  CHECK_FALSE(isHeard(kEvening + 181));
  CHECK(isHeard(kEvening - 180));
  CHECK_FALSE(isHeard(kEvening - 181));
}

TEST_CASE("one event of the service stands for one change") {
  const Nights nights = CompareNights(
      {Logged(LogEventKind::Slept, kEvening), Logged(LogEventKind::Woke, kEvening + 60),
       Logged(LogEventKind::Slept, kEvening + 120)},
      NightOfService(), kMuchLater);
  REQUIRE(nights.changes.size() == 3);
  CHECK(nights.changes[0].isHeard);
  CHECK_FALSE(nights.changes[2].isHeard);
}

TEST_CASE("a shut-down is heard as such, or as a sleep where it hibernates the service") {
  for (const char* heard : {"21/11/2026 20:0:0 - ShuttingDown", "21/11/2026 20:0:0 - Suspend"}) {
    const int64_t end = kEvening + 2 * kHour;
    const Nights nights = CompareNights(
        {Logged(LogEventKind::Stopped, end), Logged(LogEventKind::Stopped, end + 5)},
        std::vector{Heard("21/11/2026 8:0:0 - Activating", kEvening - kHour), Heard(heard, end)},
        kMuchLater);
    REQUIRE(nights.changes.size() == 1);
    CHECK(nights.changes[0].change == PowerChange::ShutDown);
    CHECK(nights.changes[0].isHeard);
  }
}

TEST_CASE("a start lies between two shut-downs") {
  const Nights nights = CompareNights(
      {Logged(LogEventKind::Stopped, kEvening), Logged(LogEventKind::Started, kMorning),
       Logged(LogEventKind::Stopped, kMorning + kHour)},
      NightOfService(), kMuchLater);
  CHECK(nights.changes.size() == 2);
}

TEST_CASE("what happened before the service's first event, and while it was stopped, is left out") {
  const std::vector<ServiceEvent> service = {
      Heard("21/11/2026 18:0:0 - Activating", kEvening),
      Heard("21/11/2026 20:0:0 - Uninitializing", kEvening + 2 * kHour),
      Heard("21/11/2026 23:0:0 - Activating", kEvening + 5 * kHour)};
  const Nights nights = CompareNights(
      {Logged(LogEventKind::Slept, kEvening - 5 * kHour), Logged(LogEventKind::Woke, kEvening),
       Logged(LogEventKind::Slept, kEvening + 3 * kHour),
       Logged(LogEventKind::Woke, kEvening + 4 * kHour),
       Logged(LogEventKind::Slept, kEvening + 6 * kHour)},
      service, kMuchLater);
  REQUIRE(nights.changes.size() == 2);
  CHECK(nights.changes[0].time == kEvening);
  CHECK(nights.changes[1].time == kEvening + 6 * kHour);
}

TEST_CASE("a service that logged nothing was not there") {
  CHECK(CompareNights({Logged(LogEventKind::Slept, kEvening)}, {}, kMuchLater).changes.empty());
}

TEST_CASE("a wake by the service's timer is to lead back to sleep") {
  const int64_t wake = kEvening + 8 * kHour;
  std::vector<ServiceEvent> service = NightOfService();
  service.insert(service.begin() + 3,
                 {Heard("22/11/2026 2:0:0 - Activating", wake), Heard("Spike_S4ToS3", wake + 1)});
  std::vector<LogEvent> system = {Logged(LogEventKind::Slept, kEvening),
                                  Logged(LogEventKind::Woke, wake)};
  Nights nights = CompareNights(system, service, kMuchLater);
  CHECK(nights.afterServiceWakes.wakes == 1);
  CHECK(nights.afterServiceWakes.stayedAwake == std::vector{wake + 1});
  CHECK(nights.afterTimerResumes.wakes == 0);

  system.push_back(Logged(LogEventKind::Slept, wake + 10));
  nights = CompareNights(system, service, kMuchLater);
  CHECK(nights.afterServiceWakes.wakes == 1);
  CHECK(nights.afterServiceWakes.stayedAwake.empty());
}

TEST_CASE("a wake by another timer at which the timeouts were put back may lead back to sleep") {
  std::vector<LogEvent> system = {Logged(LogEventKind::Slept, kEvening),
                                  Explained(kEvening, kMorning, WakeCause::Timer)};
  Nights nights = CompareNights(system, NightOfService(), kMuchLater);
  CHECK(nights.afterServiceWakes.wakes == 0);
  CHECK(nights.afterTimerResumes.wakes == 1);
  CHECK(nights.afterTimerResumes.stayedAwake == std::vector{kMorning});
  system.push_back(Logged(LogEventKind::Slept, kMorning + 900));
  CHECK(CompareNights(system, NightOfService(), kMuchLater).afterTimerResumes.stayedAwake.empty());
  system.back().time = kMorning + 901;
  CHECK(CompareNights(system, NightOfService(), kMuchLater).afterTimerResumes.stayedAwake.size() ==
        1);
}

TEST_CASE("a wake is explained even when the explanation comes after the next sleep") {
  const int64_t wake = kEvening + 8 * kHour;
  const Nights nights = CompareNights(
      {Logged(LogEventKind::Slept, kEvening), Logged(LogEventKind::Woke, wake),
       Logged(LogEventKind::Slept, wake + 10), Explained(kEvening, wake, WakeCause::Timer)},
      NightOfService(), kMuchLater);
  REQUIRE(nights.changes.size() == 3);
  CHECK(nights.changes[1].time == wake);
  CHECK(nights.changes[1].cause == WakeCause::Timer);
  CHECK(nights.changes[2].time == wake + 10);
}

TEST_CASE("a wake within the last quarter of an hour is not decided yet") {
  const std::vector<LogEvent> system = {Logged(LogEventKind::Slept, kEvening),
                                        Explained(kEvening, kMorning, WakeCause::Timer)};
  CHECK(CompareNights(system, NightOfService(), kMorning + 899).afterTimerResumes.wakes == 0);
  CHECK(CompareNights(system, NightOfService(), kMorning + 900).afterTimerResumes.wakes == 1);
}

}  // namespace dozewell::ctl
