// Loads a file of the predictor of rates of any content, learns more and predicts.

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "fuzz/input.h"
#include "prediction/rates/rate_decision.h"
#include "prediction/rates/rates_file.h"
#include "prediction/time_line.h"

namespace dozewell {
namespace {

// A file whose header fits, so that what is in it decides: a blank state with numbers of the input
// in some places.
std::vector<unsigned char> FittingFile(fuzz::Input& input) {
  RatesState state;
  while (!input.IsEmpty()) {
    const size_t place = input.Take<uint16_t>() * sizeof(float) % sizeof(state);
    const auto number = input.Take<uint32_t>();
    std::memcpy(reinterpret_cast<unsigned char*>(&state) + place, &number, sizeof(number));
  }
  return RatesFileOf(state);
}

void Run(fuzz::Input input) {
  const RateWishes wishes = {input.Take<int8_t>(), 8 * 3600, false, input.Take<uint8_t>() % 2 == 0};
  // Seldom any, since a fit takes as long as many files.
  const bool learns = input.Take<uint8_t>() % 64 == 0;
  const auto event = input.Take<TimeLineEvent>();
  const bool isFitting = input.Take<uint8_t>() % 2 == 0;
  const auto state = ReadRatesFile(isFitting ? FittingFile(input) : input.TakeRest());
  if (!state || !learns) return;
  const int64_t time = SecondsFromTm(event.time);
  state->Take(event.state, time);
  if (time == kInvalidTime) return;
  const RateDecision decision = DecideByRates(ReturnRates(state->factors), wishes, time);
  fuzz::Require(decision.hibernate >= 3 && decision.hibernate <= kNeverMinutes);
  if (!decision.second) return;
  const auto [wake, hibernate] = *decision.second;
  fuzz::Require(wake >= decision.hibernate && hibernate > wake && hibernate <= kNeverMinutes);
}

}  // namespace
}  // namespace dozewell

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  dozewell::Run({data, size});
  return 0;
}
