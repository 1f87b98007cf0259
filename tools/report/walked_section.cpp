#include "report/walked_section.h"

#include <vector>

namespace dozewell::report {
namespace {

std::vector<WalkedRow> Timeouts(const WalkedHistory& history) {
  std::vector<WalkedRow> rows;
  for (const WalkedChoice& choice : history.walk.choices) {
    if (choice.kind == WalkedKind::Fixed) rows.push_back({choice.name, choice});
  }
  return rows;
}

std::vector<WalkedRows> Groups(const WalkedHistory& history) {
  const WalkedRow settings = {"these settings, without a search",
                              history.walk.Of(WalkedKind::Settings, 0)};
  const WalkedRows future = {"Knowing the future",
                             {{"best possible", history.walk.Of(WalkedKind::Clairvoyant, 0)}}};
  if (!history.strength) {
    return {{"Fixed timeouts", Timeouts(history)}, {"Predicted", {settings}}, future};
  }
  const auto at = [&history](WalkedKind kind) -> const WalkedChoice& {
    return history.AtStrength(kind);
  };
  const WalkedChoice& best = at(WalkedKind::BestFixed);
  return {{"Fixed timeouts", Timeouts(history)},
          {"Chosen before each sleep",
           {{"the timeout that was best until then", at(WalkedKind::PastFixed)}}},
          {"Predicted by slots",
           {settings,
            {"with searches, as the service lives", at(WalkedKind::Service)},
            {"the same, where nothing can wake", at(WalkedKind::ServiceWithoutWake)}}},
          {"Predicted by rates",
           {{"with a wake", at(WalkedKind::Rates)},
            {"where nothing can wake", at(WalkedKind::RatesWithoutWake)}}},
          {"Hindsight: the timeout that turned out best",
           {{history.walk.Timeout(*best.hibernateAfterMinutes).name, best}}},
          future};
}

}  // namespace

Section WalkedSection(const WalkedHistory& history) {
  return MakeSection(
      "walked", "Every choice, walked forward",
      "What became of the recorded sleeps with each choice, each of them decided "
      "from what came before it alone. Where nothing is predicted, the user's own "
      "timeout holds.",
      WalkedTable("The outcomes of each choice, walked forward", history, Groups(history)));
}

}  // namespace dozewell::report
