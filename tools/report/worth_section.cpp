#include "report/worth_section.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "common/hours_text.h"
#include "common/html.h"
#include "common/text.h"

namespace dozewell::report {
namespace {

constexpr const char* kWorthId = "worth";
constexpr const char* kWorthTitle = "What it was worth";

const char* Compared(int64_t value, int64_t with, const char* less, const char* same,
                     const char* more) {
  if (value == with) return same;
  return value < with ? less : more;
}

std::string Verdict(const Outcomes& machine, const Outcomes& own) {
  return std::string(Compared(machine.sleepSeconds, own.sleepSeconds, "Less power", "As much power",
                              "More power")) +
         ", " +
         Compared(machine.resumesFromHibernate, own.resumesFromHibernate, "less waiting",
                  "as much waiting", "more waiting") +
         ".";
}

std::string WaitsText(const Outcomes& outcomes) {
  return CountText(outcomes.resumesFromHibernate, "wait", "waits");
}

std::string Summary(const Outcomes& machine, const WalkedChoice& own) {
  return "The service: " + HoursText(machine.sleepSeconds) + " hours asleep and " +
         WaitsText(machine) + "; the user's own timeout (" + own.name +
         "): " + HoursText(own.outcomes.sleepSeconds) + " hours and " + WaitsText(own.outcomes) +
         ".";
}

// Whether two scores differ by more than the weeks of a history may differ by chance.
const char* CertaintyOfPoints(const ScoreRange& machine, const ScoreRange& own, bool hasRanges) {
  if (!hasRanges) return "from one week, which says nothing of chance";
  if (machine.low > own.high) return "better by more than chance";
  if (machine.high < own.low) return "worse by more than chance";
  return "which may be chance, since the ranges overlap";
}

std::string PointsSentence(const WalkedHistory& history) {
  const auto machine = history.Points(history.Machine(true));
  const auto own = history.Points(history.Own());
  if (!machine || !own) return "";
  return " At strength " + std::to_string(*history.strength) + " (" +
         std::to_string(history.walk.weights[*history.strength]) +
         " of 100 points for not having to wait, the others for time hibernated): " +
         PointsText(machine->score) + " points to " + PointsText(own->score) + ", " +
         CertaintyOfPoints(*machine, *own, history.HasRanges()) + ".";
}

std::string Basis(const Walk& walk) {
  const auto lost = std::ranges::count_if(walk.searches, &SearchRun::isCutShort);
  std::string text =
      CountText(static_cast<int64_t>(walk.sleeps), "recorded sleep", "recorded sleeps") + " in " +
      CountText(static_cast<int64_t>(walk.weeks), "week", "weeks") +
      ", each decided from what came before it alone, with " +
      CountText(std::ssize(walk.searches), "search", "searches") + " on the way";
  if (lost > 0) text += " (" + std::to_string(lost) + " cut short by a suspend)";
  return text + ". Ranges: 95 of 100 draws of the same weeks.";
}

std::string GlanceTable(const WalkedHistory& history) {
  std::vector<WalkedRow> rows = {{"the user's own, " + history.Own().name, history.Own()}};
  if (history.strength) {
    rows.push_back({"timeout chosen on the past", history.AtStrength(WalkedKind::PastFixed)});
    rows.push_back({"the service, with wakes", history.Machine(true)});
    rows.push_back({"the service, without wakes", history.Machine(false)});
  } else {
    rows.push_back({"these settings", history.Machine(true)});
  }
  rows.push_back({"best possible", history.walk.Of(WalkedKind::Clairvoyant, 0)});
  return WalkedTable("What became of the recorded sleeps", history, {{nullptr, rows}});
}

}  // namespace

Section WorthSection(const WalkedHistory& history) {
  const Outcomes& machine = history.Machine(true).outcomes;
  const WalkedChoice& own = history.Own();
  return MakeSection(
      kWorthId, kWorthTitle, Basis(history.walk),
      HtmlElement("p", HtmlElement("strong", Verdict(machine, own.outcomes)) + " " +
                           HtmlText(Summary(machine, own) + PointsSentence(history))) +
          GlanceTable(history));
}

Section TooShortSection() {
  return MakeSection(kWorthId, kWorthTitle,
                     "Nothing can be compared yet: the history has no sleep that ended.", "");
}

Section BrokenSection(std::string_view why) {
  return MakeSection(kWorthId, kWorthTitle,
                     "The history cannot be replayed: " + std::string(why) + ".", "");
}

}  // namespace dozewell::report
