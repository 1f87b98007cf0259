#ifndef DOZEWELL_COMMON_RATES_EXPLANATION_H_
#define DOZEWELL_COMMON_RATES_EXPLANATION_H_

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/wall_clock.h"
#include "common/json.h"
#include "prediction/history_file.h"
#include "prediction/rates/rate_decision.h"
#include "prediction/rates/rates_state.h"
#include "prediction/suspend_decision.h"

namespace dozewell {

// The rate of return at a time, in returns an hour, and what it consists of: the usual rate times
// four factors.
struct ExplainedRate {
  tm at;
  double perHour;
  double usual;
  double timeAway;
  double timeOfDay;
  double weekday;
  double both;  // time of day and time away together
  // What was seen around there, the newer the more it counts: in this class of time away, up to 20
  // minutes earlier and later, on days of its kind.
  double returnsSeen;
  double hoursSeen;
};

// Why a suspend at a time leads to what it does with the predictor of rates.
struct RatesExplanation {
  tm at;
  RateDecision decision;
  SuspendDecision suspend;  // the same as the service takes it
  int64_t sleeps;           // how many were learnt
  RateWishes wishes;
  // An hour after the machine hibernates, or five minutes after the suspend when it never does, and
  // five minutes after it is woken. None where the weight alone decides.
  std::vector<ExplainedRate> rates;

  // How many hours asleep a wait weighs as much as. Being asleep pays above 1 / WaitHours returns
  // an hour. Only for weights between 0 and 100.
  double WaitHours() const;
};

RatesExplanation ExplainRates(const RatesState& state, const RateWishes& wishes, const tm& at);

// Learns the records that are later than all that the state has taken.
void CatchUp(RatesState& state, std::span<const HistoryRecord> records);

// The explanation in lines of at most 100 characters for a person to read, and as one JSON object.
std::string RatesExplanationText(const RatesExplanation& explanation);
Json RatesExplanationJson(const RatesExplanation& explanation);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_RATES_EXPLANATION_H_
