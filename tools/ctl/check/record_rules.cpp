#include <algorithm>

#include "common/duration_text.h"
#include "common/local_time.h"
#include "common/text.h"
#include "ctl/check/accounts.h"
#include "ctl/check/finding.h"
#include "ctl/local_time_text.h"

namespace dozewell::ctl {
namespace {

constexpr size_t kTimesShown = 3;

std::string TimeText(int64_t utcSeconds) {
  const auto time = LocalTimeText(utcSeconds);
  return time ? WithBlank(*time) : "an unreadable time";
}

// The first ones, and how many more there are.
std::string ListText(const std::vector<std::string>& items) {
  std::string text;
  const size_t shown = std::min(items.size(), kTimesShown);
  for (size_t i = 0; i < shown; ++i) text += (i > 0 ? ", " : "") + items[i];
  if (shown < items.size()) text += " and " + std::to_string(items.size() - shown) + " more";
  return text;
}

std::string TimesText(const std::vector<int64_t>& times) {
  std::vector<std::string> texts;
  texts.reserve(times.size());
  for (const int64_t time : times) texts.push_back(TimeText(time));
  return ListText(texts);
}

Finding JudgeSettings(const CheckFacts& facts) {
  if (!facts.settings.featureEnabled) {
    return Note("the feature is off", "dozewellctl enable switches it on");
  }
  if (!facts.settings.predictionsEnabled) {
    return Note("predictions are off, as DisablePrediction is 1",
                "the optimizer or dozewellctl strength set writes it anew");
  }
  return Ok("the feature and predictions are on");
}

Finding JudgeGate(const CheckFacts& facts) {
  const auto& [current, total] =
      std::pair(facts.settings.currentAttempt, facts.settings.totalAttempts);
  const std::string text = AttemptsText(current, total);
  if (!current || !total) {
    return Bad(text, "dozewellctl enable starts it and writes the counters");
  }
  return *current < *total ? Note(text, "dozewellctl enable starts it at once") : Ok(text);
}

Finding JudgeWeights(const CheckFacts& facts) {
  if (!facts.settings.engineProblem.empty()) {
    return Bad("no predictor can be built: " + facts.settings.engineProblem,
               "repair the package, which writes the default settings");
  }
  return Ok("a predictor can be built; strength " + std::to_string(facts.settings.strength) +
            (facts.settings.strengthHasResult ? "" : ", with no result of the optimizer yet"));
}

// Whoever runs this uses the machine, so no predicted timeout should be in force.
Finding JudgeCachedTimeouts(const CheckFacts& facts) {
  constexpr const char* kNames[] = {"HA_AC", "HA_DC"};
  std::string text;
  for (size_t source = 0; source < facts.settings.cachedHibernateAfter.size(); ++source) {
    const auto& cached = facts.settings.cachedHibernateAfter[source];
    if (!cached) continue;
    text += (text.empty() ? "" : ", ") + std::string(kNames[source]) + " holds " +
            (*cached == 0 ? "never" : DurationText(*cached));
  }
  if (text.empty()) return Ok("the user's own hibernate-after is in force");
  return Bad("the user's own hibernate-after was not put back: " + text,
             "the next start of the service puts it back: as administrator, net stop and net start "
             "DozewellService");
}

Finding JudgePath(const PathAccess& path, const std::string& own) {
  if (path.error != 0 || path.access.error != 0) {
    const uint32_t error = path.error != 0 ? path.error : path.access.error;
    return Note(path.path + ": not known (error " + std::to_string(error) + ")",
                "run it as administrator");
  }
  constexpr const char* kAdvice =
      "stop the service, move it away, and repair the package, which makes it safe";
  if (path.isLink) return Bad(path.path + " is a link", kAdvice);
  if (path.hasOtherNames) return Bad(path.path + " has a second name", kAdvice);
  if (!IsTrusted(path.access.owner, own)) {
    return Bad(path.path + " belongs to " + AccountName(path.access.owner), kAdvice);
  }
  const auto strangers = StrangersWith(kRightsToChange, path.access, own);
  if (!strangers.empty())
    return Bad(path.path + " can be changed by " + ListText(strangers), kAdvice);
  return Ok(path.path);
}

Finding JudgeDataFolder(const CheckFacts& facts) {
  const std::string own = facts.token ? facts.token->account : std::string();
  if (facts.dataPaths.empty()) {
    return Bad("Windows does not say where it is", "look at the program data folder of Windows");
  }
  Finding worst = Ok("belongs to the system and administrators, and only they can change it");
  for (const PathAccess& path : facts.dataPaths) {
    const bool isMissing = path.error == kErrorNoFile || path.error == kErrorNoPath;
    Finding finding = isMissing ? Ok({}) : JudgePath(path, own);
    if (finding.verdict > worst.verdict) worst = std::move(finding);
  }
  const uint32_t outer = facts.dataPaths.front().error;
  if (outer == kErrorNoFile || outer == kErrorNoPath) {
    return Note(facts.dataPaths.front().path + " is not there yet; whoever makes it first owns it",
                "install the service with the package, which makes it safe");
  }
  return worst;
}

Finding JudgeEventSource(const CheckFacts& facts) {
  const EventSourceFacts& source = facts.eventSource;
  if (!source.messageFile) {
    return Note("not registered: Event Viewer shows each text with a remark of its own",
                "the package registers it");
  }
  if (source.textError != 0) {
    return Bad(*source.messageFile + " has no text for the events (error " +
                   std::to_string(source.textError) + ")",
               "repair the package, which registers it anew");
  }
  return Ok(*source.messageFile);
}

const char* ChangeName(PowerChange change) {
  switch (change) {
    case PowerChange::Sleep:
      return "sleep";
    case PowerChange::ShutDown:
      return "shut-down";
    case PowerChange::Resume:
      return "resume";
  }
  return "";
}

// Nothing when both logs could be read.
std::optional<Finding> UnreadableLogs(const NightFacts& nights) {
  const auto note = [](const char* log, uint32_t error) {
    return Note(std::string(log) + " cannot be read (error " + std::to_string(error) + ")",
                "run it as administrator");
  };
  if (nights.systemError != 0) return note("the System log", nights.systemError);
  if (nights.serviceError != 0) return note("the Application log", nights.serviceError);
  return std::nullopt;
}

Finding JudgeNights(const CheckFacts& facts) {
  if (auto unreadable = UnreadableLogs(facts.lastNights)) return *unreadable;
  if (!facts.lastNights.hasServiceEvents) {
    const std::string text =
        "the service has logged nothing in " + std::to_string(kNightDays) + " days";
    return facts.settings.controller.runs == Expected::Yes
               ? Note(text + ", though it should have at its start",
                      "look again after the machine has slept")
               : Note(text);
  }
  const auto& changes = facts.lastNights.nights.changes;
  if (changes.empty()) return Ok("the machine neither slept nor was shut down");
  std::vector<std::string> missed;
  for (const LoggedChange& change : changes) {
    if (!change.isHeard) {
      missed.push_back(std::string(ChangeName(change.change)) + " at " + TimeText(change.time));
    }
  }
  const std::string seen = std::to_string(changes.size() - missed.size()) + " of " +
                           std::to_string(changes.size()) + " sleeps, shut-downs and resumes seen";
  if (missed.empty()) return Ok(seen);
  return Bad(seen + "; never heard of: " + ListText(missed),
             "restart the service; if it goes on, Windows does not report them to it");
}

Finding JudgeReturns(const CheckFacts& facts) {
  if (auto unreadable = UnreadableLogs(facts.lastNights)) return *unreadable;
  const auto& [serviceWakes, serviceAwake] = facts.lastNights.nights.afterServiceWakes;
  const auto& [timerWakes, timerAwake] = facts.lastNights.nights.afterTimerResumes;
  const std::string own = std::to_string(serviceWakes - serviceAwake.size()) + " of " +
                          std::to_string(serviceWakes) + " times";
  const std::string others = std::to_string(timerWakes - timerAwake.size()) + " of " +
                             std::to_string(timerWakes) + " times";
  if (!serviceAwake.empty()) {
    return Bad(
        own + " after the service's own wakes; it stayed awake at " + TimesText(serviceAwake),
        "see the privilege above; powercfg /requests names what else keeps it awake");
  }
  if (!timerAwake.empty()) {
    return Note(others +
                    " after wakes by other timers, at which the timeouts were put back; it "
                    "stayed awake at " +
                    TimesText(timerAwake),
                "unless somebody used it then: powercfg /requests names what keeps it awake");
  }
  if (serviceWakes + timerWakes == 0) return Ok("no timer woke it");
  return Ok(own + " after the service's own wakes, " + others + " after wakes by other timers");
}

constexpr CheckRule kRecordRules[] = {
    {"settings", "Settings", JudgeSettings},
    {"gate", "Start attempts", JudgeGate},
    {"weights", "Predictor", JudgeWeights},
    {"cached-timeouts", "Cached timeouts", JudgeCachedTimeouts},
    {"data-folder", "Data folder", JudgeDataFolder},
    {"event-source", "Event source", JudgeEventSource},
    {"nights", "Last nights", JudgeNights},
    {"returns", "Back to sleep", JudgeReturns},
};

}  // namespace

std::span<const CheckRule> RecordRules() { return kRecordRules; }

}  // namespace dozewell::ctl
