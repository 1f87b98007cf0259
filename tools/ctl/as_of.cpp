#include "ctl/as_of.h"

#include <cstdint>

#include "common/local_time.h"
#include "common/text.h"

namespace dozewell::ctl {
namespace {

std::optional<std::string> SavedText(const AsOf& asOf) {
  return asOf.saved ? std::optional(FormatLocalTime(*asOf.saved)) : std::nullopt;
}

}  // namespace

std::string UnknownLearningText(const AsOf& asOf) {
  return "; what the service has learnt is not known, since " + asOf.why;
}

std::string AsOfText(const AsOf& asOf) {
  const std::string saved = WithBlank(SavedText(asOf).value_or("without an event"));
  if (!asOf.isNow) return "As of the last save, " + saved + ", since " + asOf.why + ".";
  const std::string since = CountText(static_cast<int64_t>(asOf.since), "event", "events");
  if (!asOf.saved) return "As of now: " + since + ", of which nothing is saved yet.";
  return "As of now: the last save, " + saved + ", and " + since + " since then.";
}

Json AsOfJson(const AsOf& asOf) {
  return {{"now", asOf.isNow},
          {"savedUntil", OptionalJson(SavedText(asOf))},
          {"eventsSince", asOf.isNow ? Json(asOf.since) : Json()},
          {"why", asOf.isNow ? Json() : Json(asOf.why)}};
}

}  // namespace dozewell::ctl
