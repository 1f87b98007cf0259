#include <cstdlib>

#include "common/duration_text.h"
#include "common/format_text.h"
#include "ctl/check/finding.h"

namespace dozewell::ctl {
namespace {

constexpr const char* kPowerNotKnown = "not known: Windows does not tell";
constexpr const char* kSourceNames[] = {"on mains", "on battery"};

// A text for each power source.
template <typename Describe>
std::string ForBoth(const std::array<SettingInForce, 2>& setting, Describe describe) {
  std::string text;
  for (size_t source = 0; source < setting.size(); ++source) {
    if (source > 0) text += ", ";
    text += describe(setting[source]) + " " + kSourceNames[source];
  }
  return text;
}

std::string TimeoutText(const SettingInForce& timeout) {
  constexpr uint32_t kSecondsPerMinute = 60;
  if (!timeout.value) return "not known";
  return *timeout.value == 0 ? "never" : DurationText(*timeout.value / kSecondsPerMinute);
}

std::string WakeTimersText(const SettingInForce& wakeTimers) {
  constexpr const char* kNames[] = {"off", "allowed", "important ones only"};
  if (!wakeTimers.value) return "not known";
  const uint32_t value = *wakeTimers.value;
  return value < std::size(kNames) ? kNames[value] : std::to_string(value);
}

bool IsAny(const std::array<SettingInForce, 2>& setting, std::optional<uint32_t> value) {
  return setting[0].value == value || setting[1].value == value;
}

Finding JudgeVersion(const CheckFacts& facts) {
  constexpr uint32_t kOldestTried = 10;
  if (!facts.version) return Note(kPowerNotKnown);
  const auto& [major, minor, build] = *facts.version;
  const std::string version = FormatText("%u.%u build %u", major, minor, build);
  return major < kOldestTried ? Note(version + ", which is older than those it is made for")
                              : Ok(version);
}

Finding JudgeRights(const CheckFacts& facts) {
  if (facts.isAdministrator == true) return Ok("an administrator's");
  return Note("not an administrator's, so some lines may be not known",
              "run it as administrator to see all");
}

Finding JudgeSleep(const CheckFacts& facts) {
  if (!facts.machine.capabilities) return Note(kPowerNotKnown);
  if (facts.machine.capabilities->HasS3()) return Ok("available");
  if (facts.machine.capabilities->HasModernStandby()) return Note("not available; see below");
  return Bad("not available: the machine can only hibernate",
             "look for it in the firmware's settings; powercfg /availablesleepstates says why");
}

Finding JudgeModernStandby(const CheckFacts& facts) {
  if (!facts.machine.capabilities) return Note(kPowerNotKnown);
  if (!facts.machine.capabilities->HasModernStandby()) return Ok("not in use");
  return Bad(
      "in the place of sleep: the service can neither see the machine sleep nor send it back",
      "have Windows hibernate it, powercfg /change hibernate-timeout-dc 60, and switch the "
      "feature off, dozewellctl disable");
}

Finding JudgeHibernation(const CheckFacts& facts) {
  if (!facts.machine.capabilities) return Note(kPowerNotKnown);
  if (facts.machine.capabilities->HasS4()) return Ok("available");
  return Bad("not available: the service has nothing to decide",
             "powercfg /availablesleepstates says why; without it, dozewellctl disable");
}

Finding JudgeHibernationFile(const CheckFacts& facts) {
  if (!facts.machine.capabilities) return Note(kPowerNotKnown);
  if (facts.machine.capabilities->HasHibernationFile()) return Ok("there");
  return Bad("none, so the machine never hibernates",
             "as administrator, powercfg /hibernate /type full");
}

Finding JudgeFastStartup(const CheckFacts& facts) {
  const auto startsFast = StartsFast(facts.machine);
  if (!startsFast) return Note(kPowerNotKnown);
  if (!*startsFast) return Ok("off");
  return Note(
      "on: a shut-down hibernates the service, which takes it for a sleep and arms its wake timer",
      "to have shut-downs end it, switch off \"Turn on fast startup\" in Control Panel, Power "
      "Options");
}

Finding JudgeWakeTimers(const CheckFacts& facts) {
  const auto& wakeTimers = facts.machine.wakeTimers;
  const std::string text = ForBoth(wakeTimers, WakeTimersText);
  if (AreWakeTimersForbidden(facts.machine)) {
    return Bad("forbidden by policy: " + text,
               "allow them in the policy: System, Power Management, Sleep Settings");
  }
  if (IsAny(wakeTimers, std::nullopt)) return Note(text);
  if (IsAny(wakeTimers, 0)) {
    return Note(text + ": Windows may not wake the machine to hibernate it",
                "dozewellctl power set ac wake-timers on, and the same with dc");
  }
  return Ok(text);
}

Finding JudgeScheme(const CheckFacts& facts) {
  const auto& timeouts = facts.machine.hibernateAfter;
  if (!facts.activeScheme) {
    return Bad("Windows names no active power scheme",
               "as administrator, powercfg /restoredefaultschemes");
  }
  const std::string text =
      *facts.activeScheme + ", hibernates after " + ForBoth(timeouts, TimeoutText);
  if (IsAny(timeouts, std::nullopt)) {
    return Bad(text, "powercfg /query SCHEME_CURRENT SUB_SLEEP shows what the scheme lacks");
  }
  if (IsAny(facts.sleepAfter, 0)) {
    return Note(text + "; falls asleep after " + ForBoth(facts.sleepAfter, TimeoutText),
                "the service acts only when the machine sleeps: dozewellctl power set ac "
                "sleep-after 30m");
  }
  return Ok(text);
}

Finding JudgePolicy(const CheckFacts& facts) {
  const auto& timeouts = facts.machine.hibernateAfter;
  if (IsUnderPolicy(timeouts)) {
    return Bad("a policy sets hibernate-after, so the service's timeouts have no effect: " +
                   ForBoth(timeouts, TimeoutText),
               "do not configure it in the policy: System, Power Management, Sleep Settings");
  }
  if (facts.isSchemeUnderPolicy == true) {
    return Note("a policy sets the active power scheme, so changed timeouts may not take effect",
                "dozewellctl check --try shows whether they can be written");
  }
  if (!timeouts[0].underPolicy || !timeouts[1].underPolicy) return Note(kPowerNotKnown);
  return Ok("none sets hibernate-after");
}

Finding JudgeDriver(const CheckFacts& facts) {
  if (!facts.machine.hasDriver) return Note("not known, as the service does not answer");
  if (*facts.machine.hasDriver) return Ok("answers");
  if (facts.machine.windowsTimer == WindowsTimer::Unused) {
    return Note(
        "none: the machine hibernates when predicted, but nothing wakes it ahead of its use",
        "install the graphics driver of the machine's maker, if it has such a timer, or let "
        "Windows "
        "wake the machine: WakeTimer=windows in the settings");
  }
  const std::vector<std::string> limits = WindowsTimerLimits(facts.machine);
  if (limits.empty()) return Ok("none; Windows' own timer wakes the machine in its place");
  std::string text = "none, with Windows' own timer in its place; but ";
  for (const std::string& limit : limits) text += (&limit == &limits[0] ? "" : ", ") + limit;
  return Note(
      text,
      "dozewellctl power set ac wake-timers on, and the same with dc; look for a wake by the "
      "clock (RTC) in the firmware's settings");
}

Finding JudgeZone(const CheckFacts& facts) {
  if (!facts.zone) return Bad("Windows knows of none", "set it in Settings, Time & language");
  const auto& [name, behind, ignoresDaylightSaving] = *facts.zone;
  const std::string text = name + FormatText(", UTC%c%02d:%02d", behind > 0 ? '-' : '+',
                                             std::abs(behind) / 60, std::abs(behind) % 60);
  return ignoresDaylightSaving ? Note(text + ", without its daylight saving time") : Ok(text);
}

Finding JudgeZoneVariable(const CheckFacts& facts) {
  if (!facts.zoneVariable) return Ok("not set");
  return Note("TZ is " + *facts.zoneVariable +
                  " for the whole machine; programs that obey it show other times than the service",
              "delete it in the system's environment variables");
}

constexpr CheckRule kMachineRules[] = {
    {"windows", "Windows", JudgeVersion},
    {"rights", "Rights", JudgeRights},
    {"sleep", "Sleep (S3)", JudgeSleep},
    {"modern-standby", "Modern Standby", JudgeModernStandby},
    {"hibernation", "Hibernation (S4)", JudgeHibernation},
    {"hibernation-file", "Hibernation file", JudgeHibernationFile},
    {"fast-startup", "Fast Startup", JudgeFastStartup},
    {"wake-timers", "Wake timers", JudgeWakeTimers},
    {"scheme", "Power scheme", JudgeScheme},
    {"policy", "Policy", JudgePolicy},
    {"driver", "Driver", JudgeDriver},
    {"zone", "Time zone", JudgeZone},
    {"zone-variable", "TZ", JudgeZoneVariable},
};

}  // namespace

std::span<const CheckRule> MachineRules() { return kMachineRules; }

}  // namespace dozewell::ctl
