#include "common/local_time.h"
#include "common/rates_explanation.h"
#include "common/suspend_decision_json.h"

namespace dozewell {

Json RatesExplanationJson(const RatesExplanation& explanation) {
  Json rates = Json::array();
  for (const ExplainedRate& rate : explanation.rates) {
    rates.push_back({{"time", FormatLocalTime(rate.at)},
                     {"perHour", rate.perHour},
                     {"usual", rate.usual},
                     {"timeAway", rate.timeAway},
                     {"timeOfDay", rate.timeOfDay},
                     {"weekday", rate.weekday},
                     {"both", rate.both},
                     {"returnsSeen", rate.returnsSeen},
                     {"hoursSeen", rate.hoursSeen}});
  }
  const bool isWeighed = explanation.wishes.weight > 0 && explanation.wishes.weight < 100;
  return {{"at", FormatLocalTime(explanation.at)},
          {"decision", SuspendDecisionJson(explanation.suspend, explanation.at)},
          {"predictor", "rates"},
          {"sleeps", explanation.sleeps},
          {"weight", explanation.wishes.weight},
          {"waitHours", isWeighed ? Json(explanation.WaitHours()) : Json()},
          {"canWake", explanation.wishes.canWake},
          {"rates", rates}};
}

}  // namespace dozewell
