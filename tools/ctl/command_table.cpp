#include <algorithm>
#include <iterator>

#include "ctl/command.h"
#include "ctl/commands.h"

namespace dozewell::ctl {
namespace {

constexpr CommandArgument kTimer = {"TIMER", "", "0, the alarm, or 1, the duration",
                                    &Options::timer, "0 1"};
constexpr CommandArgument kTime = {"TIME", "", "When it fires, in whole minutes, 2000 to 2127",
                                   &Options::time};
constexpr CommandArgument kDuration = {
    "DURATION", "", "How long until the timer fires; without it, the timer is shown",
    &Options::duration};
constexpr CommandArgument kSource = {"SOURCE", "", "ac (plugged in) or dc (on battery)",
                                     &Options::source, "ac dc"};
constexpr CommandArgument kSetting = {
    "SETTING", "", "display-off, sleep-after, hibernate-after, wake-timers or hybrid-sleep",
    &Options::setting, "display-off sleep-after hibernate-after wake-timers hybrid-sleep"};
constexpr CommandArgument kValue = {
    "VALUE", "", "45m, 1h30m or never; wake-timers: off, on, important; hybrid-sleep: off, on",
    &Options::value};
constexpr CommandArgument kScheme = {"SCHEME", "", "balanced, power-saver or high-performance",
                                     &Options::scheme, "balanced power-saver high-performance"};
constexpr CommandArgument kStrength = {
    "STRENGTH", "", "Which of the optimizer's results to use, from 0", &Options::strength};
constexpr CommandArgument kAt = {"--at", "TIME", "Time to explain; without one, now", &Options::at};
constexpr CommandArgument kOut = {"--out", "FILE",
                                  "File to write; without one, dozewell-report.html in this folder",
                                  &Options::out};
constexpr CommandArgument kMetricsOut = {
    "--out", "FILE", "With --metrics, the file to write; without one, standard output",
    &Options::out};
constexpr CommandArgument kFrom = {
    "--from", "FILE", "What wevtutil qe System /f:xml exported here; without one, the log itself",
    &Options::from};

constexpr CommandArgument kSettingsOut = {"FILE", "", "File to write; without one, standard output",
                                          &Options::file};

constexpr CommandArgument kExportOut = {"FILE", "", "CSV history to write, which ends in .csv",
                                        &Options::file};
constexpr CommandArgument kWeeks = {
    "--weeks", "N", "With --anonymous: weeks by which all times are moved, -2000 to 2000",
    &Options::weeks};

}  // namespace

std::span<const Command> Commands() {
  static const Command kCommands[] = {
      {"status",
       "Show the state of the service and of this machine on one screen",
       {"status", "status --json", "status --metrics --out dozewell.prom"},
       RunStatus,
       {},
       {&kMetricsOut},
       false,
       false,
       true},
      {"check",
       "Check what the service needs of this machine, and say what to do",
       {"check", "check --json", "check --try"},
       RunCheck,
       {},
       {},
       false,
       true},
      {"enable", "Switch the feature on, now and for later starts", {"enable"}, RunEnable, {}, {}},
      {"disable",
       "Switch the feature off, now and for later starts",
       {"disable", "disable --yes"},
       RunDisable,
       {},
       {},
       true},
      {"driver",
       "Show whether the driver's wake timers are enabled",
       {"driver"},
       RunDriver,
       {},
       {}},
      {"wake get",
       "Show what a wake timer holds",
       {"wake get", "wake get 0"},
       RunWakeGet,
       {},
       {&kTimer}},
      {"wake set",
       "Arm a wake timer for a time",
       {"wake set 0 \"2026-11-21 06:30\""},
       RunWakeSet,
       {&kTimer, &kTime},
       {}},
      {"wake raw",
       "Arm a wake timer for a duration, or show it",
       {"wake raw 1 1h30m", "wake raw 1"},
       RunWakeRaw,
       {&kTimer},
       {&kDuration}},
      {"power get",
       "Show the active power scheme's settings for sleep",
       {"power get", "power get dc"},
       RunPowerGet,
       {},
       {&kSource}},
      {"power set",
       "Change a setting of the active power scheme",
       {"power set dc hibernate-after 3h", "power set ac wake-timers on"},
       RunPowerSet,
       {&kSource, &kSetting, &kValue},
       {}},
      {"scheme get", "Show which power scheme is active", {"scheme get"}, RunSchemeGet, {}, {}},
      {"scheme set",
       "Make a power scheme the active one",
       {"scheme set balanced"},
       RunSchemeSet,
       {&kScheme},
       {}},
      {"strength get",
       "Show which of the optimizer's results is used",
       {"strength get"},
       RunStrengthGet,
       {},
       {}},
      {"strength set",
       "Choose which of the optimizer's results is used",
       {"strength set 1"},
       RunStrengthSet,
       {&kStrength},
       {}},
      {"reset-history",
       "Have the service forget all that it has learnt",
       {"reset-history", "reset-history --yes"},
       RunResetHistory,
       {},
       {},
       true},
      {"ping", "Show whether the service answers", {"ping"}, RunPing, {}, {}},
      {"watch",
       "Print the service's events as they are logged, until Ctrl+C",
       {"watch", "watch --json"},
       RunWatch,
       {},
       {}},
      {"explain",
       "Say what the service would do on a suspend, and why",
       {"explain", "explain --at \"2026-11-21 18:00\""},
       RunExplain,
       {},
       {&kAt}},
      {"report",
       "Write a page of HTML: what will happen tonight, what was learnt, what it was worth, and "
       "why",
       {"report", "report --out week.html"},
       RunReport,
       {},
       {&kOut}},
      {"settings show",
       "Show the settings in force, each with the key that it comes from",
       {"settings show"},
       RunSettingsShow,
       {},
       {}},
      {"settings export",
       "Write the settings in force as the file that dozewell-replay --settings takes",
       {"settings export", "settings export office-7.ini"},
       RunSettingsExport,
       {},
       {&kSettingsOut},
       true},
      {"export",
       "Write the history and the settings into one file, for use on other computers",
       {"export office-7.csv", "export --anonymous --weeks -3 pc.csv"},
       RunExport,
       {&kExportOut},
       {&kWeeks},
       true,
       false,
       false,
       true},
      {"import-history",
       "Extend the history backwards from the Windows event log, while the service is stopped",
       {"import-history", "import-history --from system.xml --yes"},
       RunImportHistory,
       {},
       {&kFrom},
       true},
  };
  return kCommands;
}

const char* GroupDescription(std::string_view group) {
  struct Group {
    std::string_view name;
    const char* description;
  };
  static constexpr Group kGroups[] = {
      {"wake", "The driver's wake timers: get, set, raw"},
      {"power", "The power scheme's settings for sleep: get, set"},
      {"scheme", "The active power scheme: get, set"},
      {"settings", "The settings in force: show, export"},
      {"strength", "Which of the optimizer's results is used: get, set"},
  };
  const Group* const found = std::ranges::find(kGroups, group, &Group::name);
  return found == std::end(kGroups) ? "" : found->description;
}

}  // namespace dozewell::ctl
