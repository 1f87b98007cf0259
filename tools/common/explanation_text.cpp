#include <algorithm>
#include <cstdio>
#include <iterator>

#include "base/numbers.h"
#include "common/explanation.h"

namespace dozewell {
namespace {

constexpr const char* kDayNames[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
// A cycle of seven days begins on a Thursday.
constexpr int kFirstWeekday = 4;

// Slot, probability, last, second-last and older observations.
constexpr const char* kEvidenceLine = "    %-31s%-13s%-9s%-13s%s\n";

// The most lines of evidence for one search.
constexpr size_t kMaxEvidenceLines = 12;

template <typename... Arguments>
std::string Format(const char* format, Arguments... arguments) {
  char text[200];
  std::snprintf(text, sizeof(text), format, arguments...);
  return text;
}

std::string Date(const tm& time) {
  const char* const day = time.tm_wday >= 0 && time.tm_wday < 7 ? kDayNames[time.tm_wday] : "???";
  return Format("%s %04d-%02d-%02d %02d:%02d", day, time.tm_year + 1900, time.tm_mon + 1,
                time.tm_mday, time.tm_hour, time.tm_min);
}

std::string Percent(float probability) {
  return Format("%.1f %%", static_cast<double>(probability) * 100.0);
}

std::string Duration(int32_t minutes) {
  if (minutes < 60) return Format("%d min", minutes);
  if (minutes < 24 * 60) return Format("%d h %02d min", minutes / 60, minutes % 60);
  return Format("%d d %02d h %02d min", minutes / (24 * 60), minutes / 60 % 24, minutes % 60);
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

// Days without older observations take one off both numbers of their group, which can leave
// numbers that make no sense as counts.
bool MakesSense(const Observations& observations) {
  return observations.sum >= 0 && observations.sum <= observations.count && observations.count > 0;
}

std::string OlderObservations(const Observations& observations) {
  if (observations.sum == kNone) return "-";
  return Format(MakesSense(observations) ? "%d of %d in use" : "%d / %d *", observations.sum,
                observations.count);
}

// One line for slots in a row of which the same is known.
void AppendEvidence(const SearchExplanation& search, int32_t minutesPerSlot, std::string& text) {
  text += Format(kEvidenceLine, "slot", "probability", "last", "second-last", "older");
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
      text += Format(
          "    and %d more slots between %s and %s\n", static_cast<int>(search.slots.end() - first),
          Percent(least.first->probability).c_str(), Percent(least.second->probability).c_str());
      return;
    }
    tm end = std::prev(next)->start;
    AddSecondsToTime(&end, Wrap32(int64_t{minutesPerSlot} * 60));
    const std::string range = Date(first->start) + Format(" to %02d:%02d", end.tm_hour, end.tm_min);
    text += Format(kEvidenceLine, range.c_str(), Percent(first->probability).c_str(),
                   Observation(first->observations.last).c_str(),
                   Observation(first->observations.secondLast).c_str(),
                   OlderObservations(first->observations).c_str());
    footnote |= first->observations.sum != kNone && !MakesSense(first->observations);
    first = next;
  }
  if (footnote) text += "    * Every day without older observations takes 1 off both numbers.\n";
}

// Why a search found nothing, apart from reasons of its own.
std::string CommonReason(const SearchExplanation& search, const Explanation& explanation) {
  if (search.end == SearchEnd::TooFewSlots) return "the cycle has no other slot than this one";
  return "nothing is known yet about the slot at " + Date(search.slots.front().start) +
         Format(" (unknown: %d of %d slots)", explanation.unknownSlots, explanation.slotCount);
}

std::string IdleReason(const SearchExplanation& search, const Explanation& explanation) {
  if (search.end == SearchEnd::SlotsTooLong) {
    return Format(
        "slots of %d minutes (TimeResolution) are longer than the %d minutes of an idle "
        "stretch",
        explanation.minutesPerSlot, kIdleStretchMinutes);
  }
  if (search.end != SearchEnd::Nowhere) return CommonReason(search, explanation);
  std::string reason = Format(
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
  return Format("no slot reaches %s (StrengthHigh); the one that comes nearest is",
                Percent(explanation.strengthHigh).c_str());
}

void AppendIdle(const char* name, const SearchExplanation& search, const Explanation& explanation,
                std::string& text) {
  if (search.end == SearchEnd::Found) {
    text += Format("%s: from %s, %s after %s.\n", name, Date(search.foundAt).c_str(),
                   Duration(search.minutes).c_str(), Date(search.from).c_str());
    text += Format("  The next %d minutes in which every slot is below %s (StrengthLow):\n",
                   kIdleStretchMinutes, Percent(explanation.strengthLow).c_str());
  } else {
    text +=
        Format("%s: no prediction.\n  Why: %s\n", name, IdleReason(search, explanation).c_str());
  }
  if (search.end == SearchEnd::Found || search.end == SearchEnd::Nowhere) {
    AppendEvidence(search, explanation.minutesPerSlot, text);
  }
}

void AppendUse(const SearchExplanation& search, const Explanation& explanation, std::string& text) {
  if (search.end == SearchEnd::Found) {
    text += Format("Next use: from %s, %s later.\n", Date(search.foundAt).c_str(),
                   Duration(search.minutes).c_str());
    text += Format("  The next slot at or above %s (StrengthHigh):\n",
                   Percent(explanation.strengthHigh).c_str());
  } else {
    text += Format("Next use: no prediction.\n  Why: %s\n", UseReason(search, explanation).c_str());
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
      text += kDayNames[(day + kFirstWeekday) % kDaysInWeek];
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
  text += Format("\n  hibernates the machine after %s, at %s,\n",
                 Duration(*decision.haMinutes).c_str(), Date(hibernateAt).c_str());
  if (!decision.nextSleepTime) return text + "  and arms no wake timer.\n";
  text += Format("  wakes it after %s, at %s, to sleep until it is used,\n",
                 Duration(*decision.timerMinutes).c_str(), Date(*decision.nextSleepTime).c_str());
  if (!decision.nextHAMinutes) return text + "  and leaves the timeout as it is then.\n";
  return text + Format("  and hibernates it again when it was not used for %s.\n",
                       Duration(*decision.nextHAMinutes).c_str());
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
