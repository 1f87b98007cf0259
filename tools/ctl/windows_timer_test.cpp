#include "ctl/windows_timer.h"

#include <doctest/doctest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "ctl/fakes/client_fake.h"
#include "ctl/machine_kind.h"
#include "fakes/client_machine.h"
#include "fakes/power_fake.h"
#include "fakes/settings_fake.h"
#include "support/calls.h"
#include "support/text_parts.h"

namespace dozewell::ctl {
namespace {

using fakes::client;
using fakes::ClientMachine;
using fakes::ClientRun;
using fakes::Ctl;
using fakes::power;
using fakes::settings;
using fakes::Works;

constexpr uint32_t kWakes = 1;
constexpr uint32_t kCannotWake = 2;

void UseWindowsTimer(uint32_t state) {
  ClientMachine::Provision();
  settings.current.values[L"WindowsTimerState"] = fakes::Number32(state);
  power.values["balanced AC wake timers"] = 1;
  power.values["balanced DC wake timers"] = 1;
}

std::vector<std::string> LimitsOf(const std::function<void()>& make) {
  const ClientMachine machine;
  UseWindowsTimer(kWakes);
  make();
  MachineKind kind = ReadMachineKind();
  NoteWakeTimer(kind, /*answers=*/true);
  return WindowsTimerLimits(kind);
}

std::string OutputOfCommand(const ClientMachine& machine, const std::vector<std::string>& command) {
  return Ctl(machine, command).output;
}

constexpr const char* kWakesNothing =
    "warning: it wakes nothing: Windows' timer, which is in the driver's place, knows only "
    "durations, and only in timer 1";

}  // namespace

TEST_CASE("Windows' timer is in use while the service says so") {
  const ClientMachine machine;
  CHECK(ReadWindowsTimer() == WindowsTimer::Unused);
  for (const auto& [state, timer] : {std::pair{0U, WindowsTimer::Unused},
                                     {1U, WindowsTimer::Wakes},
                                     {2U, WindowsTimer::CannotWake},
                                     {3U, WindowsTimer::Unused}}) {
    UseWindowsTimer(state);
    CHECK(ReadWindowsTimer() == timer);
  }
}

TEST_CASE("what limits Windows' timer") {
  using Limits = std::vector<std::string>;
  CHECK(LimitsOf([] {}) == Limits{});
  CHECK(LimitsOf([] { UseWindowsTimer(kCannotWake); }) ==
        Limits{"Windows says that it cannot wake this machine"});
  CHECK(LimitsOf([] { power.capabilities->bytes[PowerCapabilities::kTimerWake] = 4; }) ==
        Limits{"the machine's clock does not wake it from hibernation"});
  CHECK(LimitsOf([] {
          power.values["balanced AC wake timers"] = 2;
          power.values["balanced DC wake timers"] = 0;
        }) == Limits{"Windows does not allow it on mains", "Windows does not allow it on battery"});
  // What is not known is no limit.
  CHECK(LimitsOf([] { power.capabilities.reset(); }) == Limits{});
  CHECK(LimitsOf([] { settings.current.values.clear(); }) == Limits{});
}

TEST_CASE("the status shows Windows' timer and its limits") {
  const ClientMachine machine;
  UseWindowsTimer(kWakes);
  client.wakeTimes = {WakeTime{30, 6, 22, 11, 26}, WakeTime{8, 13, 0, 0, 0}};
  client.wakeCounts = {0, 840};
  power.values["balanced DC wake timers"] = 0;
  const std::string output = OutputOfCommand(machine, {"status"});
  CHECK(Contains(output, "Machine             no driver but Windows' timer\n"));
  CHECK(Contains(output,
                 "Wake timers         enabled, Windows' own\n"
                 "  limit             Windows does not allow it on battery\n"
                 "  0, the alarm      2026-11-22 06:30, which wakes nothing\n"
                 "  1, the duration   14 h 00 min\n"));
  CHECK(Contains(OutputOfCommand(machine, {"status", "--json"}),
                 "\"driver\":false,\"wakeTimer\":\"windows\","
                 "\"wakeTimerLimits\":[\"Windows does not allow it on battery\"]}"));
  client.wakeTimes[1] = WakeTime{30, 6, 22, 11, 26};
  CHECK(Contains(OutputOfCommand(machine, {"status"}),
                 "  1, the duration   a time of the calendar, which wakes nothing\n"));
}

TEST_CASE("a note that the service left does not count while nothing wakes the machine") {
  const ClientMachine machine;
  UseWindowsTimer(kWakes);
  client.refused = {"GetDriverEnabled"};
  const std::string output = OutputOfCommand(machine, {"status"});
  CHECK(Contains(output, "Machine             no driver\n"));
  CHECK(Contains(output, "Wake timers         none: the driver does not answer\n"));
  CHECK(Contains(OutputOfCommand(machine, {"status", "--json"}),
                 "\"driver\":false,\"wakeTimer\":\"none\",\"wakeTimerLimits\":[]}"));
}

TEST_CASE("the check says what wakes the machine, and what keeps Windows' timer from it") {
  const ClientMachine machine;
  UseWindowsTimer(kWakes);
  CHECK(Contains(OutputOfCommand(machine, {"check"}),
                 "ok    Driver            none; Windows' own timer wakes the machine in its "
                 "place\n"));
  UseWindowsTimer(kCannotWake);
  CHECK(Contains(OutputOfCommand(machine, {"check"}),
                 "note  Driver            none, with Windows' own timer in its place; but Windows "
                 "says that it cannot wake this machine\n"));
}

TEST_CASE("a timer that wakes nothing is warned of when it is set") {
  struct Row {
    std::vector<std::string> command;
    const char* output;
    bool wakes;
  };
  for (const Row& row : {
           Row{{"wake", "set", "0", "2026-11-21 06:30"},
               "Timer 0 holds 2026-11-21 06:30.\n",
               false},
           {{"wake", "set", "1", "2026-11-21 06:30"}, "Timer 1 holds 2026-11-21 06:30.\n", false},
           {{"wake", "raw", "0", "45m"}, "Timer 0 holds 45 min from now.\n", false},
           {{"wake", "raw", "1", "45m"}, "Timer 1 is armed for 45 min from now.\n", true},
       }) {
    const ClientMachine machine;
    UseWindowsTimer(kWakes);
    const ClientRun run = Ctl(machine, row.command);
    CHECK(run.exitCode == 0);
    CHECK(run.output == row.output);
    CHECK(run.messages == (row.wakes ? Calls{} : Calls{kWakesNothing}));
  }
}

}  // namespace dozewell::ctl
