#include "fleet/judge.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <span>
#include <string>
#include <vector>

#include "base/numbers.h"
#include "common/comparison.h"
#include "common/optimizer_inputs.h"
#include "settings/setting_names.h"
#include "walk/walk_forward.h"
#include "walk/week_samples.h"

namespace dozewell::fleet {
namespace {

struct Judged {
  FleetChoice choice;
  Outcomes outcomes;
};

// What compare shows, without the timeouts that it shows twice. Where both of its lists have a
// name, that of the second one says so.
std::vector<Judged> AllChoices(const Comparison& comparison, const Walk& walk) {
  std::vector<Choice> compared = {comparison.settings};
  compared.insert(compared.end(), comparison.adopted.begin(), comparison.adopted.end());
  compared.push_back(comparison.clairvoyant);

  std::vector<Judged> all;
  for (const WalkedChoice& choice : walk.choices) {
    if (choice.kind != WalkedKind::Fixed) continue;
    all.push_back({{choice.name, choice.kind, {}, choice.hibernateAfterMinutes}, choice.outcomes});
  }
  for (const Choice& choice : compared) all.push_back({{choice.name}, choice.outcomes});
  for (const WalkedChoice& choice : walk.choices) {
    if (choice.kind == WalkedKind::Fixed) continue;
    const bool isTaken = std::ranges::find(compared, choice.name, &Choice::name) != compared.end();
    all.push_back(
        {{choice.name + (isTaken ? ", walked forward" : ""), choice.kind, choice.strength},
         choice.outcomes});
  }
  return all;
}

std::optional<ScoreBounds> BoundsOf(const Walk& walk, std::span<const HistoryRecord> history,
                                    size_t strength) {
  constexpr double kThousand = 1000;
  if (strength >= walk.weights.size()) return std::nullopt;
  const auto range =
      WeekSamples(history, walk.weeks)
          .RangeOf(walk.Of(WalkedKind::Service, strength).weeks, walk.weights[strength]);
  if (!range) return std::nullopt;
  return ScoreBounds{std::llround(range->low * kThousand), std::llround(range->high * kThousand)};
}

int64_t SecondsOf(const HistoryRecord& record) { return TruncateToInt64(record.time); }

void JudgeRecords(std::span<const HistoryRecord> history, IConfigurations& configuration,
                  const FleetQuestion& question, MachineRow& row) {
  const Comparison comparison = Compare(history, configuration, question.userTimeoutSeconds);
  const Walk walk =
      WalkForward(history, configuration, question.userTimeoutSeconds, question.habits);
  for (const Judged& judged : AllChoices(comparison, walk)) {
    row.outcomes.push_back(judged.outcomes);
  }
  row.bounds = BoundsOf(walk, history, question.strength);
  row.records = std::ssize(history);
  if (history.empty()) return;
  row.from = SecondsOf(history.front());
  row.to = SecondsOf(history.back());
}

// A message without the path that it begins with.
std::string WithoutPath(std::string message, const std::string& path) {
  const std::string prefix = path + ": ";
  return message.starts_with(prefix) ? message.substr(prefix.size()) : message;
}

}  // namespace

FleetQuestion Ask(IConfigurations& configuration, int64_t userTimeoutSeconds,
                  const SearchHabits& habits) {
  const Walk walk = WalkForward({}, configuration, userTimeoutSeconds, habits);
  FleetQuestion question;
  question.habits = habits;
  question.userTimeoutSeconds = userTimeoutSeconds;
  question.weights = walk.weights;
  question.strength = static_cast<size_t>(
      std::max(0, Atoi(configuration.GetValue(kPredictorSection, kStrengthName))));
  for (const Judged& judged : AllChoices(Compare({}, configuration, userTimeoutSeconds), walk)) {
    question.choices.push_back(judged.choice);
  }
  return question;
}

MachineRow Judge(const FoundHistory& found, IConfigurations& configuration,
                 const FleetQuestion& question) {
  MachineRow row = {found.shown, found.reason};
  if (!found.reason.empty()) return row;
  try {
    std::vector<std::string> warnings;
    const SimulatedHistory history = LoadSimulatedHistory(found.path, warnings);
    for (const std::string& warning : warnings) row.damage += WithoutPath(warning, found.path);
    const auto judge = [&] { JudgeRecords(history.records, configuration, question, row); };
    TellPlaceIn(
        history, [&] { return found.path; }, judge);
  } catch (const std::exception& error) {
    row = {found.shown, WithoutPath(error.what(), found.path)};
  }
  return row;
}

}  // namespace dozewell::fleet
