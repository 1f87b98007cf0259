// Loads a file of the predictor of rates of any content, learns more and predicts.

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "fakes/configurations_fake.h"
#include "fuzz/input.h"
#include "prediction/rates/rates_file.h"
#include "prediction/rates/rates_predictor.h"

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
  fakes::Configurations configuration;
  configuration.values["WR"] = std::to_string(input.Take<int8_t>());
  configuration.values["Strength"] = "0";
  HistorianImpl historian;
  const bool canWake = input.Take<uint8_t>() % 2 == 0;
  RatesPredictor predictor(&configuration, &historian, [=] { return canWake; });
  // Few, so that most of the time goes into files and not into fits.
  std::vector<TimeLineEvent> events(input.Take<uint8_t>() % 3);
  for (TimeLineEvent& event : events) event = input.Take<TimeLineEvent>();
  const bool isFitting = input.Take<uint8_t>() % 2 == 0;
  const auto state = ReadRatesFile(isFitting ? FittingFile(input) : input.TakeRest());
  if (!state) return;
  predictor.SetState(*state);
  for (const TimeLineEvent& event : events) {
    historian.NotifyListener(event);
    for (const PredictionRecord& prediction : predictor.GetPredictions(event.time)) {
      fuzz::Require(prediction.minutes > 0 && prediction.minutes <= kNeverMinutes);
    }
  }
}

}  // namespace
}  // namespace dozewell

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  dozewell::Run({data, size});
  return 0;
}
