#include "prediction/rates/return_forecast.h"

namespace dozewell {

ReturnRates::ReturnRates(const RateFactors& factors) {
  ForEachCell([&](const RateCell& cell) {
    const double rate = factors.RateOf(cell);
    perSecond_[cell.away][cell.ClockOfWeek()] = rate;
    nobodyInTenMinutes_[cell.away][cell.ClockOfWeek()] =
        Exponential(-rate * static_cast<double>(kClockMark));
  });
}

}  // namespace dozewell
