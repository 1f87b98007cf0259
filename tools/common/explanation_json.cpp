#include "common/explanation_json.h"

#include "common/local_time.h"
#include "common/suspend_decision_json.h"

namespace dozewell {
namespace {

const char* EndName(SearchEnd end) {
  switch (end) {
    case SearchEnd::Found:
      return "found";
    case SearchEnd::UnknownSlot:
      return "unknown slot";
    case SearchEnd::Nowhere:
      return "nowhere";
    case SearchEnd::SlotsTooLong:
      return "slots too long";
    case SearchEnd::TooFewSlots:
      return "too few slots";
  }
  return "";
}

Json SlotJson(const SlotEvidence& evidence) {
  const Observations& seen = evidence.observations;
  return {{"slot", evidence.slot},
          {"start", FormatLocalTime(evidence.start)},
          {"probability", JsonNumber(evidence.probability)},
          {"last", seen.last},
          {"secondLast", seen.secondLast},
          {"olderInUse", seen.sum},
          {"older", seen.count}};
}

Json SearchJson(const SearchExplanation& search) {
  const bool found = search.end == SearchEnd::Found;
  Json slots = Json::array();
  for (const SlotEvidence& evidence : search.slots) slots.push_back(SlotJson(evidence));
  return {{"end", EndName(search.end)},
          {"from", FormatLocalTime(search.from)},
          {"foundAt", found ? Json(FormatLocalTime(search.foundAt)) : Json()},
          {"minutes", found ? Json(search.minutes) : Json()},
          {"slots", slots}};
}

Json OptionalSearchJson(const std::optional<SearchExplanation>& search) {
  return search ? SearchJson(*search) : Json();
}

}  // namespace

Json ExplanationJson(const Explanation& explanation) {
  return {{"at", FormatLocalTime(explanation.at)},
          {"decision", SuspendDecisionJson(explanation.decision, explanation.at)},
          {"minutesPerSlot", explanation.minutesPerSlot},
          {"slots", explanation.slotCount},
          {"unknownSlots", explanation.unknownSlots},
          {"strengthLow", JsonNumber(explanation.strengthLow)},
          {"strengthHigh", JsonNumber(explanation.strengthHigh)},
          {"dayGroups", explanation.dayGroups},
          {"idle", SearchJson(explanation.idle)},
          {"use", OptionalSearchJson(explanation.use)},
          {"nextIdle", OptionalSearchJson(explanation.nextIdle)}};
}

}  // namespace dozewell
