#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "prediction/explanation.h"
#include "replay/commands.h"
#include "replay/float_text.h"
#include "replay/learnt_data.h"
#include "replay/local_time.h"
#include "replay/suspend_decision_json.h"

namespace dozewell {
namespace {

std::string Quoted(const std::string& text) { return '"' + text + '"'; }

// "[a,b]" of what `toJson` makes of each item.
template <typename Items, typename ToJson>
std::string ListJson(const Items& items, ToJson toJson) {
  std::string json = "[";
  for (const auto& item : items) {
    if (json.size() > 1) json += ',';
    json += toJson(item);
  }
  return json + ']';
}

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
         ",\"start\":" + Quoted(FormatLocalTime(evidence.start)) +
         ",\"probability\":" + FloatJson(evidence.probability) +
         ",\"last\":" + std::to_string(seen.last) +
         ",\"secondLast\":" + std::to_string(seen.secondLast) +
         ",\"olderInUse\":" + std::to_string(seen.sum) +
         ",\"older\":" + std::to_string(seen.count) + "}";
}

std::string SearchJson(const SearchExplanation& search) {
  std::string json = "{\"end\":" + Quoted(EndName(search.end)) +
                     ",\"from\":" + Quoted(FormatLocalTime(search.from));
  if (search.end == SearchEnd::Found) {
    json += ",\"foundAt\":" + Quoted(FormatLocalTime(search.foundAt)) +
            ",\"minutes\":" + std::to_string(search.minutes);
  }
  return json + ",\"slots\":" + ListJson(search.slots, SlotJson) + "}";
}

std::string SearchJson(const std::optional<SearchExplanation>& search) {
  return search ? SearchJson(*search) : "null";
}

std::string Json(const Explanation& explanation) {
  const auto dayJson = [](int day) { return std::to_string(day); };
  const auto groupJson = [&](const std::vector<int>& group) { return ListJson(group, dayJson); };
  return "{\"at\":" + Quoted(FormatLocalTime(explanation.at)) +
         ",\"decision\":" + SuspendDecisionJson(explanation.decision) +
         ",\"minutesPerSlot\":" + std::to_string(explanation.minutesPerSlot) +
         ",\"slots\":" + std::to_string(explanation.slotCount) +
         ",\"unknownSlots\":" + std::to_string(explanation.unknownSlots) +
         ",\"strengthLow\":" + FloatJson(explanation.strengthLow) +
         ",\"strengthHigh\":" + FloatJson(explanation.strengthHigh) +
         ",\"dayGroups\":" + ListJson(explanation.dayGroups, groupJson) +
         ",\"idle\":" + SearchJson(explanation.idle) + ",\"use\":" + SearchJson(explanation.use) +
         ",\"nextIdle\":" + SearchJson(explanation.nextIdle) + "}\n";
}

}  // namespace

void RunExplain(const Options& options, Results& results) {
  LearntData learnt(options, results);
  ArbitraryCycleProbabilityTracker tracker = learnt.Tracker();
  const Explanation explanation = Explain(tracker, learnt.TimeOrLastEvent("--at", options.at));
  results.output = options.json ? Json(explanation) : ExplanationText(explanation);
}

}  // namespace dozewell
