#include "common/explanation_json.h"

#include <vector>

#include "common/float_text.h"
#include "common/json.h"
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

std::string SlotJson(const SlotEvidence& evidence) {
  const Observations& seen = evidence.observations;
  return "{\"slot\":" + std::to_string(evidence.slot) +
         ",\"start\":" + JsonString(FormatLocalTime(evidence.start)) +
         ",\"probability\":" + FloatJson(evidence.probability) +
         ",\"last\":" + std::to_string(seen.last) +
         ",\"secondLast\":" + std::to_string(seen.secondLast) +
         ",\"olderInUse\":" + std::to_string(seen.sum) +
         ",\"older\":" + std::to_string(seen.count) + "}";
}

std::string SearchJson(const SearchExplanation& search) {
  std::string json = "{\"end\":" + JsonString(EndName(search.end)) +
                     ",\"from\":" + JsonString(FormatLocalTime(search.from));
  if (search.end == SearchEnd::Found) {
    json += ",\"foundAt\":" + JsonString(FormatLocalTime(search.foundAt)) +
            ",\"minutes\":" + std::to_string(search.minutes);
  }
  return json + ",\"slots\":" + JsonList(search.slots, SlotJson) + "}";
}

}  // namespace

std::string ExplanationJson(const Explanation& explanation) {
  const auto dayJson = [](int day) { return std::to_string(day); };
  const auto groupJson = [&](const std::vector<int>& group) { return JsonList(group, dayJson); };
  return "{\"at\":" + JsonString(FormatLocalTime(explanation.at)) +
         ",\"decision\":" + SuspendDecisionJson(explanation.decision) +
         ",\"minutesPerSlot\":" + std::to_string(explanation.minutesPerSlot) +
         ",\"slots\":" + std::to_string(explanation.slotCount) +
         ",\"unknownSlots\":" + std::to_string(explanation.unknownSlots) +
         ",\"strengthLow\":" + FloatJson(explanation.strengthLow) +
         ",\"strengthHigh\":" + FloatJson(explanation.strengthHigh) +
         ",\"dayGroups\":" + JsonList(explanation.dayGroups, groupJson) +
         ",\"idle\":" + SearchJson(explanation.idle) +
         ",\"use\":" + OptionalJson(explanation.use, SearchJson) +
         ",\"nextIdle\":" + OptionalJson(explanation.nextIdle, SearchJson) + "}\n";
}

}  // namespace dozewell
