#include "common/rates_explanation.h"

#include "base/wall_clock.h"
#include "prediction/history_file.h"
#include "prediction/rates/rates_predictor.h"

namespace dozewell {
namespace {

constexpr double kSecondsPerHour = 3600;

// Adds up what was seen in the cells around one.
void LookAround(const LearntRates& learnt, const RateCell& cell, ExplainedRate& rate) {
  rate.returnsSeen = 0;
  rate.hoursSeen = 0;
  for (size_t weekday = 0; weekday < kWeekdays; ++weekday) {
    if (DayKindOf(weekday) != DayKindOf(cell.weekday)) continue;
    for (const size_t clocks : {kClockCells - 1, size_t{0}, size_t{1}}) {
      const RateCell near = {weekday, (cell.clock + clocks) % kClockCells, cell.away};
      rate.returnsSeen += learnt.returns[near.Index()];
      rate.hoursSeen += learnt.secondsAway[near.Index()] / kSecondsPerHour;
    }
  }
}

ExplainedRate RateAt(const RatesState& state, int64_t suspend, int64_t moment) {
  const RateFactors& factors = state.factors;
  const RateCell cell = CellOf(suspend, moment);
  const size_t kind = DayKindOf(cell.weekday) * kClockCells + cell.clock;
  ExplainedRate rate = {};
  TmFromSeconds(moment, rate.at);
  rate.perHour = factors.RateOf(cell) * kSecondsPerHour;
  rate.usual = factors.base * kSecondsPerHour;
  rate.timeAway = factors.away[cell.away];
  rate.timeOfDay = factors.clockWide[cell.clock] * factors.clock[cell.clock] *
                   factors.kindWide[kind] * factors.kind[kind];
  rate.weekday = factors.day[cell.weekday];
  rate.both = factors.local[cell.clock * kAwayClasses + cell.away];
  LookAround(state.learnt, cell, rate);
  return rate;
}

}  // namespace

double RatesExplanation::WaitHours() const { return SecondsPerReturn(wishes) / kSecondsPerHour; }

RatesExplanation ExplainRates(const RatesState& state, const RateWishes& wishes, const tm& at) {
  constexpr int32_t kIntoHibernation = 60;  // minutes
  constexpr int32_t kIntoSleep = 5;
  const int64_t suspend = SecondsFromTm(at);
  RatesExplanation explanation = {
      at,     DecideByRates(ReturnRates(state.factors), wishes, suspend),
      {},     state.learnt.sleeps,
      wishes, {}};
  const RateDecision& decision = explanation.decision;
  explanation.suspend = DecideSuspend(RecordsOf(decision, at), at);
  if (wishes.weight <= 0 || wishes.weight >= 100) return explanation;
  const auto add = [&](int32_t minutes) {
    explanation.rates.push_back(RateAt(state, suspend, suspend + minutes * kSecondsPerMinute));
  };
  const bool hibernates = decision.hibernate < kNeverMinutes;
  add(hibernates ? decision.hibernate + kIntoHibernation : kIntoSleep);
  if (decision.second) add(decision.second->wake + kIntoSleep);
  return explanation;
}

void CatchUp(RatesState& state, std::span<const HistoryRecord> records) {
  const int64_t newest = state.newest;
  for (const HistoryRecord& record : records) {
    const TimeLineEvent event = ToTimeLineEvent(record);
    const int64_t time = SecondsFromTm(event.time);
    if (time > newest) state.Take(event.state, time);
  }
}

}  // namespace dozewell
