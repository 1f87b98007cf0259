#ifndef DOZEWELL_PREDICTION_RATES_LEARNT_RATES_H_
#define DOZEWELL_PREDICTION_RATES_LEARNT_RATES_H_

#include <array>
#include <cstdint>

#include "prediction/rates/sleep_pieces.h"

namespace dozewell {

// What a machine's sleeps were like, the newer the more it counts: how long it was away in each
// cell, how often its user came back there, and how long a sleep lasts. Part of a file, byte for
// byte.
struct LearntRates {
  std::array<float, kRateCells> secondsAway = {};
  std::array<float, kRateCells> returns = {};
  double idleCount = 0;
  double idleSeconds = 0;
  int64_t lastResume = 0;  // wall-clock seconds
  int64_t sleeps = 0;      // how many were learnt, each counting in full for ever

  // Learns a sleep between two wall-clock times, neither before 1970; one that ends no later than
  // it begins only moves `lastResume`. True when it was learnt.
  bool Learn(int64_t suspend, int64_t resume);

  // The length of a sleep to expect, in seconds. Without evidence it is eight hours.
  double MeanIdleSeconds() const;

  bool operator==(const LearntRates&) const = default;

 private:
  void Fade(int64_t seconds);
};

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_RATES_LEARNT_RATES_H_
