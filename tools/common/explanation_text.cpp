#include <algorithm>
#include <iterator>

#include "base/numbers.h"
#include "common/day_names.h"
#include "common/duration_text.h"
#include "common/explanation.h"
#include "common/format_text.h"

namespace dozewell {
namespace {

// Slot, probability, last, second-last and older observations.
constexpr char kEvidenceLine[] = "    %-31s%-13s%-9s%-13s%s\n";

// The most lines of evidence for one search.
constexpr size_t kMaxEvidenceLines = 12;

std::string Date(const tm& time) {
  return FormatText("%s %04d-%02d-%02d %02d:%02d", DayName(time.tm_wday).c_str(),
                    time.tm_year + 1900, time.tm_mon + 1, time.tm_mday, time.tm_hour, time.tm_min);
}

std::string Percent(float probability) {
  return FormatText("%.1f %%", static_cast<double>(probability) * 100.0);
}

std::string Observation(int32_t observation) {
  switch (observation) {
    case 1:
      return "in use";
    case 0:
      return "idle";
    case kNone:
      return "-";
    default:
      return std::to_string(observation);
  }
}

// A day without older observations takes 1 off both numbers of its group, so the numbers may make
// no sense as counts.
bool MakesSense(const Observations& observations) {
  return observations.sum >= 0 && observations.sum <= observations.count && observations.count > 0;
}

std::string OlderObservations(const Observations& observations) {
  if (observations.sum == kNone) return "-";
  return FormatText(MakesSense(observations) ? "%d of %d in use" : "%d / %d *", observations.sum,
                    observations.count);
}

// Appends a table with one line for consecutive slots of which the same is known.
void AppendEvidence(const SearchExplanation& search, int32_t minutesPerSlot, std::string& text) {
  text += FormatText(kEvidenceLine, "slot", "probability", "last", "second-last", "older");
  size_t lines = 0;
  bool footnote = false;
  for (auto first = search.slots.begin(); first != search.slots.end();) {
    const auto next = std::find_if(first, search.slots.end(), [first](const auto& evidence) {
      return evidence.observations != first->observations;
    });
    if (++lines > kMaxEvidenceLines) {
      const auto least = std::minmax_element(
          first, search.slots.end(),
          [](const auto& a, const auto& b) { return a.probability < b.probability; });
      text += FormatText(
          "    and %d more slots between %s and %s\n", static_cast<int>(search.slots.end() - first),
          Percent(least.first->probability).c_str(), Percent(least.second->probability).c_str());
      return;
    }
    tm end = std::prev(next)->start;
    AddSecondsToTime(&end, Wrap32(int64_t{minutesPerSlot} * 60));
    const std::string range =
        Date(first->start) + FormatText(" to %02d:%02d", end.tm_hour, end.tm_min);
    text += FormatText(kEvidenceLine, range.c_str(), Percent(first->probability).c_str(),
                       Observation(first->observations.last).c_str(),
                       Observation(first->observations.secondLast).c_str(),
                       OlderObservations(first->observations).c_str());
    footnote |= first->observations.sum != kNone && !MakesSense(first->observations);
    first = next;
  }
  if (footnote) text += "    * Every day without older observations takes 1 off both numbers.\n";
}

// Why a search found nothing, for reasons that both kinds of search share.
std::string CommonReason(const SearchExplanation& search, const Explanation& explanation) {
  if (search.end == SearchEnd::TooFewSlots) return "the cycle has no other slot than this one";
  return "nothing is known yet about the slot at " + Date(search.slots.front().start) +
         FormatText(" (unknown: %d of %d slots)", explanation.unknownSlots, explanation.slotCount);
}

std::string IdleReason(const SearchExplanation& search, const Explanation& explanation) {
  if (search.end == SearchEnd::SlotsTooLong) {
    return FormatText(
        "slots of %d minutes (TimeResolution) are longer than the %d minutes of an idle "
        "stretch",
        explanation.minutesPerSlot, kIdleStretchMinutes);
  }
  if (search.end != SearchEnd::Nowhere) return CommonReason(search, explanation);
  std::string reason = FormatText(
      "no %d minutes in a row are below %s (StrengthLow); the longest "
      "stretch has %d",
      kIdleStretchMinutes, Percent(explanation.strengthLow).c_str(),
      search.longestRun * explanation.minutesPerSlot);
  if (!search.slots.empty()) {
    reason += ",\n  and the nearest slot above it is";
  }
  return reason;
}

std::string UseReason(const SearchExplanation& search, const Explanation& explanation) {
  if (search.end != SearchEnd::Nowhere) return CommonReason(search, explanation);
  return FormatText("no slot reaches %s (StrengthHigh); the one that comes nearest is",
                    Percent(explanation.strengthHigh).c_str());
}

void AppendIdle(const char* name, const SearchExplanation& search, const Explanation& explanation,
                std::string& text) {
  if (search.end == SearchEnd::Found) {
    text += FormatText("%s: from %s, %s after %s.\n", name, Date(search.foundAt).c_str(),
                       DurationText(search.minutes).c_str(), Date(search.from).c_str());
    text += FormatText("  The next %d minutes in which every slot is below %s (StrengthLow):\n",
                       kIdleStretchMinutes, Percent(explanation.strengthLow).c_str());
  } else {
    text += FormatText("%s: no prediction.\n  Why: %s\n", name,
                       IdleReason(search, explanation).c_str());
  }
  if (search.end == SearchEnd::Found || search.end == SearchEnd::Nowhere) {
    AppendEvidence(search, explanation.minutesPerSlot, text);
  }
}

void AppendUse(const SearchExplanation& search, const Explanation& explanation, std::string& text) {
  if (search.end == SearchEnd::Found) {
    text += FormatText("Next use: from %s, %s later.\n", Date(search.foundAt).c_str(),
                       DurationText(search.minutes).c_str());
    text += FormatText("  The next slot at or above %s (StrengthHigh):\n",
                       Percent(explanation.strengthHigh).c_str());
  } else {
    text +=
        FormatText("Next use: no prediction.\n  Why: %s\n", UseReason(search, explanation).c_str());
  }
  if (search.end == SearchEnd::Found || search.end == SearchEnd::Nowhere) {
    AppendEvidence(search, explanation.minutesPerSlot, text);
  }
}

std::string GroupsText(const std::vector<std::vector<int>>& groups) {
  if (groups.empty()) return "Every slot counts alone.\n";
  std::string text = "Days that count together:";
  for (const auto& group : groups) {
    if (&group != &groups.front()) text += ';';
    for (const int day : group) {
      text += ' ';
      text += CycleDayName(day);
    }
  }
  return text + ".\n";
}

std::string DecisionText(const tm& at, const SuspendDecision& decision) {
  std::string text = "A suspend at " + Date(at);
  if (!decision.haMinutes) {
    return text + " leaves the user's own timeout in place and arms no wake timer.\n";
  }
  tm hibernateAt = at;
  AddSecondsToTime(&hibernateAt, Wrap32(int64_t{*decision.haMinutes} * 60));
  text += FormatText("\n  hibernates the machine after %s, at %s,\n",
                     DurationText(*decision.haMinutes).c_str(), Date(hibernateAt).c_str());
  if (!decision.nextSleepTime) return text + "  and arms no wake timer.\n";
  text += FormatText("  wakes it after %s, at %s, to sleep until it is used,\n",
                     DurationText(*decision.timerMinutes).c_str(),
                     Date(*decision.nextSleepTime).c_str());
  if (!decision.nextHAMinutes) return text + "  and leaves the timeout as it is then.\n";
  return text + FormatText("  and hibernates it again when it was not used for %s.\n",
                           DurationText(*decision.nextHAMinutes).c_str());
}

}  // namespace

std::string ExplanationText(const Explanation& explanation) {
  std::string text = DecisionText(explanation.at, explanation.decision) + '\n';
  AppendIdle("Next idle stretch", explanation.idle, explanation, text);
  if (explanation.use) AppendUse(*explanation.use, explanation, text);
  if (explanation.nextIdle) {
    AppendIdle("Idle stretch after that", *explanation.nextIdle, explanation, text);
  }
  return text + GroupsText(explanation.dayGroups);
}

}  // namespace dozewell
