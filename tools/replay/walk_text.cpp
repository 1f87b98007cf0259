#include "replay/walk_text.h"

#include <cmath>
#include <cstddef>
#include <optional>
#include <vector>

#include "base/wall_clock.h"
#include "common/local_time.h"
#include "common/text.h"
#include "replay/outcomes_text.h"
#include "replay/table_text.h"

namespace dozewell::replay {
namespace {

constexpr size_t kCellWidth = 17;

double Rounded(double score) { return std::round(score * 1000) / 1000; }

Json ScoresJson(const Walk& walk, const WalkedChoice& choice, const WeekSamples& samples) {
  Json scores = Json::array();
  for (size_t strength = 0; strength < walk.weights.size(); ++strength) {
    if (choice.strength.value_or(strength) != strength) continue;
    const auto range = samples.RangeOf(choice.weeks, walk.weights[strength]);
    if (!range) continue;
    scores.push_back({{"strength", strength},
                      {"weight", walk.weights[strength]},
                      {"score", JsonNumber(Rounded(range->score))},
                      {"low", JsonNumber(Rounded(range->low))},
                      {"high", JsonNumber(Rounded(range->high))}});
  }
  return scores;
}

// With one decimal.
std::string TenthsText(double number) {
  const auto tenths = static_cast<int64_t>(std::round(std::fabs(number) * 10));
  return (number < 0 && tenths > 0 ? "-" : "") + std::to_string(tenths / 10) + '.' +
         std::to_string(tenths % 10);
}

std::string RangeText(const std::optional<ScoreRange>& range) {
  if (!range) return "no resume";
  return TenthsText(range->score) + " (" + TenthsText(range->low) + "-" + TenthsText(range->high) +
         ")";
}

// One line of the table: a cell for each strength.
template <typename Cell>
std::string StrengthsLine(const Walk& walk, const std::string& name, Cell cell) {
  std::vector<std::string> cells;
  for (size_t i = 0; i < walk.weights.size(); ++i) cells.push_back(cell(i));
  return AlignedLine(name, cells, kCellWidth);
}

std::string BasisText(const Walk& walk) {
  int64_t cutShort = 0;
  for (const SearchRun& run : walk.searches) cutShort += run.isCutShort ? 1 : 0;
  std::string text = CountText(static_cast<int64_t>(walk.sleeps), "sleep", "sleeps") + " in " +
                     CountText(static_cast<int64_t>(walk.weeks), "week", "weeks") + ", " +
                     CountText(std::ssize(walk.searches), "search", "searches");
  if (cutShort > 0) text += ", of which a suspend cut short " + std::to_string(cutShort);
  return text + "\n";
}

}  // namespace

Json WalkJson(const Walk& walk, const WeekSamples& samples) {
  Json list = Json::array();
  for (const WalkedChoice& choice : walk.choices) {
    Json json = {{"name", choice.name}, {"strength", OptionalJson(choice.strength)}};
    json.update(OutcomesJson(choice.outcomes));
    json["hibernateAfterMinutes"] = OptionalJson(choice.hibernateAfterMinutes);
    json["scores"] = ScoresJson(walk, choice, samples);
    list.push_back(json);
  }
  return list;
}

Json SearchesJson(const Walk& walk) {
  Json list = Json::array();
  for (const auto& [launched, isCutShort] : walk.searches) {
    tm time;
    TmFromSeconds(launched, time);
    list.push_back({{"time", FormatLocalTime(time)}, {"cutShort", isCutShort}});
  }
  return list;
}

std::string WalkText(const Walk& walk, const WeekSamples& samples, int64_t userTimeoutSeconds) {
  const WalkedChoice& own = walk.Timeout(userTimeoutSeconds / 60);
  const auto line = [&](const std::string& name, const auto& choiceOf) {
    return StrengthsLine(walk, name, [&](size_t strength) {
      return RangeText(samples.RangeOf(choiceOf(strength).weeks, walk.weights[strength]));
    });
  };
  const auto lineOf = [&](const std::string& name, WalkedKind kind) {
    return line(name,
                [&](size_t strength) -> const WalkedChoice& { return walk.Of(kind, strength); });
  };
  return "Walked forward, as a real machine spends it: scores, and where 95 of 100 draws of weeks "
         "lie\n" +
         StrengthsLine(walk, "strength", [](size_t i) { return std::to_string(i); }) +
         StrengthsLine(walk, "weight", [&](size_t i) { return std::to_string(walk.weights[i]); }) +
         lineOf("best timeout in hindsight", WalkedKind::BestFixed) +
         StrengthsLine(
             walk, "  which is",
             [&](size_t i) {
               return walk.Timeout(*walk.Of(WalkedKind::BestFixed, i).hibernateAfterMinutes).name;
             }) +
         lineOf("timeout of the past", WalkedKind::PastFixed) +
         line("your timeout, " + own.name, [&](size_t) -> const WalkedChoice& { return own; }) +
         lineOf("settings", WalkedKind::Settings) + lineOf("service", WalkedKind::Service) +
         lineOf("service without wake", WalkedKind::ServiceWithoutWake) +
         lineOf("rates", WalkedKind::Rates) +
         lineOf("rates without wake", WalkedKind::RatesWithoutWake) +
         lineOf("clairvoyant", WalkedKind::Clairvoyant) + BasisText(walk);
}

}  // namespace dozewell::replay
