#include <doctest/doctest.h>

#include <string>
#include <utility>

#include "base/file.h"
#include "base/utf8.h"
#include "common/version.h"
#include "ctl/fakes/check_fake.h"
#include "ctl/fakes/client_fake.h"
#include "fakes/client_machine.h"
#include "fakes/power_fake.h"
#include "fakes/settings_fake.h"
#include "support/text_parts.h"

namespace dozewell::ctl {
namespace {

using fakes::checked;
using fakes::client;
using fakes::ClientMachine;
using fakes::ClientRun;
using fakes::Ctl;
using fakes::Fails;
using fakes::kServerUnavailable;
using fakes::power;
using fakes::settings;
using fakes::Works;

// The lines that hold a number, without that of the program itself.
std::string Numbers(const std::string& metrics) {
  std::string numbers;
  for (size_t start = 0; start < metrics.size();) {
    const size_t end = metrics.find('\n', start) + 1;
    const std::string line = metrics.substr(start, end - start);
    if (line[0] != '#' && !line.starts_with("dozewell_build_info")) numbers += line;
    start = end;
  }
  return numbers;
}

std::string Content(const std::wstring& path) {
  const auto bytes = ReadWholeFile(path).value();
  return {bytes.begin(), bytes.end()};
}

constexpr const char* kRunning =
    "dozewell_up 1\n"
    "dozewell_service_running 1\n"
    "dozewell_feature_enabled 1\n"
    "dozewell_predictions_enabled 1\n"
    "dozewell_controller{expected=\"no\"} 0\n"
    "dozewell_controller{expected=\"maybe\"} 0\n"
    "dozewell_controller{expected=\"yes\"} 1\n"
    "dozewell_start_attempts 3\n"
    "dozewell_start_attempts_required 3\n"
    "dozewell_machine_ability{ability=\"sleep\"} 1\n"
    "dozewell_machine_ability{ability=\"hibernation\"} 1\n"
    "dozewell_machine_ability{ability=\"hibernation_file\"} 1\n"
    "dozewell_machine_ability{ability=\"modern_standby\"} 0\n"
    "dozewell_machine_ability{ability=\"fast_startup\"} 0\n"
    "dozewell_machine_ability{ability=\"driver\"} 1\n"
    "dozewell_machine_ability{ability=\"windows_timer\"} 0\n"
    "dozewell_wake_timers_forbidden 0\n"
    "dozewell_hibernate_after_under_policy 0\n"
    "dozewell_wake_timers_enabled 1\n"
    "dozewell_display_off_seconds{source=\"ac\"} 600\n"
    "dozewell_display_off_seconds{source=\"dc\"} 300\n"
    "dozewell_sleep_after_seconds{source=\"ac\"} 1800\n"
    "dozewell_sleep_after_seconds{source=\"dc\"} 900\n"
    "dozewell_hibernate_after_seconds{source=\"ac\"} 10800\n"
    "dozewell_hibernate_after_seconds{source=\"dc\"} +Inf\n"
    "dozewell_strength 1\n"
    "dozewell_strength_has_result 0\n"
    "dozewell_last_search_timestamp_seconds 1793491200\n";

void Run() {
  ClientMachine::Provision();
  settings.current.values = {{L"LastOptimizerRun", fakes::Number64(1793491200)}};
  client.power = {PowerTimeouts{10, 30, 180, 1, 1}, PowerTimeouts{5, 15, 0, 2, 0}};
  client.strength = 1;
}

}  // namespace

TEST_CASE("metrics tell what the status does") {
  const ClientMachine machine;
  Run();
  const ClientRun run = Ctl(machine, {"status", "--metrics"});
  CHECK(run.exitCode == 0);
  CHECK(run.messages.empty());
  CHECK(Numbers(run.output) == kRunning);
  CHECK(
      run.output.starts_with(std::string("# HELP dozewell_build_info The version of dozewellctl.\n"
                                         "# TYPE dozewell_build_info gauge\n"
                                         "dozewell_build_info{version=\"") +
                             kVersion +
                             "\"} 1\n"
                             "# HELP dozewell_up Whether the service answers.\n"));
  CHECK(Ctl(machine, {"status", "--metrics", "--out", "-"}).output == run.output);
}

TEST_CASE("metrics of a service that does not answer are those that are known without it") {
  const ClientMachine machine;
  ClientMachine::Provision();
  client.unreachable = kServerUnavailable;
  client.service = {1060, 0};
  power.capabilities = std::nullopt;
  settings.current.values = {{L"DisablePrediction", fakes::Number32(1)}};
  const ClientRun run = Ctl(machine, {"status", "--metrics"});
  CHECK(run.exitCode == 3);
  CHECK(Numbers(run.output) ==
        "dozewell_up 0\n"
        "dozewell_service_running 0\n"
        "dozewell_predictions_enabled 0\n"
        "dozewell_controller{expected=\"no\"} 1\n"
        "dozewell_controller{expected=\"maybe\"} 0\n"
        "dozewell_controller{expected=\"yes\"} 0\n"
        "dozewell_start_attempts 3\n"
        "dozewell_start_attempts_required 3\n"
        "dozewell_wake_timers_forbidden 0\n"
        "dozewell_hibernate_after_under_policy 0\n"
        "dozewell_strength 0\n"
        "dozewell_strength_has_result 0\n");
}

TEST_CASE("metrics tell how much keeps Windows' timer from waking the machine") {
  const ClientMachine machine;
  Run();
  settings.current.values[L"WindowsTimerState"] = fakes::Number32(2);
  const std::string windows = Numbers(Ctl(machine, {"status", "--metrics"}).output);
  CHECK(Contains(windows, "\ndozewell_machine_ability{ability=\"windows_timer\"} 0\n"));
  CHECK(Contains(windows, "\ndozewell_windows_timer_limits 1\n"));
  client.refused = {"GetDriverEnabled"};
  CHECK(!Contains(Ctl(machine, {"status", "--metrics"}).output, "windows_timer_limits"));
}

TEST_CASE("whether the service runs is left out where the system does not tell") {
  const ClientMachine machine;
  Run();
  client.service = {5, 0};
  CHECK(!Contains(Ctl(machine, {"status", "--metrics"}).output, "dozewell_service_running"));
  client.service = {0, 1};
  CHECK(Contains(Ctl(machine, {"status", "--metrics"}).output, "\ndozewell_service_running 0\n"));
}

TEST_CASE("metrics are written to a file as a whole, over those of the last run") {
  const ClientMachine machine;
  Run();
  const std::string metrics = Ctl(machine, {"status", "--metrics"}).output;
  const std::wstring path = machine.Folder().File(L"dozewell.prom");
  const std::string name = PathToSystem(path);
  const std::string longer(metrics.size() * 2, 'x');
  WriteWholeFile(path, longer.data(), longer.size());
  Works(machine, {"status", "--metrics", "--out", name}, "");
  CHECK(Content(path) == metrics);
  client.unreachable = kServerUnavailable;
  CHECK(Ctl(machine, {"status", "--metrics", "--out", name}).exitCode == 3);
  CHECK(Numbers(Content(path)).starts_with("dozewell_up 0\n"));
}

TEST_CASE("metrics are never written over what the service has learnt") {
  const ClientMachine machine;
  for (const auto& [file, what] : {std::pair{L"zs7state.dat", "the service's history"},
                                   {L"cpredict.z7", "the service's data file"},
                                   {L"rates.z7", "the service's data file"}}) {
    WriteWholeFile(settings.dataFolder + file, "", 0);
    const std::string name = PathToSystem(settings.dataFolder + file);
    Fails(machine, {"status", "--metrics", "--out", name}, 1,
          name + ": cannot be written: it is also " + what);
  }
}

TEST_CASE("metrics are no second form of JSON, and a status without them has no file") {
  const ClientMachine machine;
  Fails(machine, {"status", "--metrics", "--json"}, 2,
        "--metrics and --json are two forms of the same");
  Fails(machine, {"status", "--out", "new"}, 2, "--out is for --metrics");
  CHECK(client.calls.empty());
}

}  // namespace dozewell::ctl
