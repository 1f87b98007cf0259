// Compares how long a suspend and a resume take in the predictor of slots and in that of rates,
// side by side through one year, and how much memory each takes.

#include <malloc.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <memory>
#include <vector>

#include "fakes/configurations_fake.h"
#include "played_year.h"
#include "prediction/cyclic_probability_predictor.h"
#include "prediction/historian.h"
#include "prediction/rates/lasting_rates_predictor.h"

namespace dozewell {
namespace {

using Clock = std::chrono::steady_clock;
using Microseconds = std::chrono::duration<double, std::micro>;

// One run through the year.
struct Times {
  std::vector<double> suspends;  // microseconds each
  std::vector<double> resumes;
};

fakes::Configurations Configuration() {
  fakes::Configurations configuration;
  configuration.timeResolution = 10;
  configuration.values["DayGrouping"] = "12";
  configuration.dataFolder = L"no such folder";
  return configuration;
}

// What the controller does: it predicts and tells of a suspend, and tells of a resume.
template <typename Predictor>
Times PlayYear() {
  fakes::Configurations configuration = Configuration();
  HistorianImpl historian;
  Predictor predictor(&configuration, &historian);
  Times times;
  for (const TimeLineEvent& event : PlayedYear()) {
    const Clock::time_point start = Clock::now();
    if (event.state == Suspend) predictor.GetPredictions(event.time);
    predictor.OnTimeLineEvent(event);
    const double taken = Microseconds(Clock::now() - start).count();
    (event.state == Suspend ? times.suspends : times.resumes).push_back(taken);
  }
  return times;
}

void KeepShorter(std::vector<double>& shortest, const std::vector<double>& times) {
  if (shortest.empty()) shortest = times;
  std::ranges::transform(shortest, times, shortest.begin(),
                         [](double a, double b) { return std::min(a, b); });
}

// The shortest of several runs for each event, since other work of the machine only makes one
// longer.
void KeepShorter(Times& shortest, const Times& times) {
  KeepShorter(shortest.suspends, times.suspends);
  KeepShorter(shortest.resumes, times.resumes);
}

// A predictor of rates that has learnt nothing and looks for no file.
struct BlankRatesPredictor : LastingRatesPredictor {
  BlankRatesPredictor(IConfigurations* configuration, IHistorian* historian)
      : LastingRatesPredictor(configuration, historian, [] { return true; }, {},
                              {std::make_unique<RatesState>(), /*isOfUnreadFile=*/false}) {}
};

void Print(const char* what, std::vector<double> slots, std::vector<double> rates) {
  std::ranges::sort(slots);
  std::ranges::sort(rates);
  const auto print = [&](const char* which, double ofSlots, double ofRates) {
    std::printf("%-8s %-8s %10.1f us %10.1f us %8.2f\n", what, which, ofSlots, ofRates,
                ofRates / ofSlots);
  };
  print("median", slots[slots.size() / 2], rates[rates.size() / 2]);
  print("longest", slots.back(), rates.back());
}

size_t HeapBytes() {
  const struct mallinfo2 heap = mallinfo2();
  return heap.uordblks + heap.hblkhd;
}

// How much memory a predictor takes.
template <typename Predictor>
size_t BytesOf() {
  fakes::Configurations configuration = Configuration();
  HistorianImpl historian;
  const size_t before = HeapBytes();
  const auto predictor = std::make_unique<Predictor>(&configuration, &historian);
  return HeapBytes() - before;
}

void Run() {
  constexpr int kRuns = 15;
  Times slots;
  Times rates;
  // In turns, so that both meet the same machine.
  for (int i = 0; i < kRuns; ++i) {
    KeepShorter(slots, PlayYear<CyclicProbabilityPredictor>());
    KeepShorter(rates, PlayYear<BlankRatesPredictor>());
  }
  std::printf("%-17s %13s %13s %8s\n", "", "slots", "rates", "ratio");
  Print("suspend", slots.suspends, rates.suspends);
  Print("resume", slots.resumes, rates.resumes);
  std::printf("memory: slots %zu bytes, rates with the slots beside them %zu bytes\n",
              BytesOf<CyclicProbabilityPredictor>(), BytesOf<BlankRatesPredictor>());
}

}  // namespace
}  // namespace dozewell

int main() { dozewell::Run(); }
