// Compares how long a suspend and a resume take in the predictor of slots and in that of rates,
// side by side through one year, and what each keeps in memory.

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <functional>
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
Times PlayYear(Predictor& predictor) {
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

// The shortest of several runs for each event, since other work of the machine only makes one
// longer.
Times ShortestOf(const std::function<Times()>& run) {
  constexpr int kRuns = 9;
  Times shortest = run();
  for (int i = 1; i < kRuns; ++i) {
    const Times times = run();
    std::ranges::transform(shortest.suspends, times.suspends, shortest.suspends.begin(),
                           [](double a, double b) { return std::min(a, b); });
    std::ranges::transform(shortest.resumes, times.resumes, shortest.resumes.begin(),
                           [](double a, double b) { return std::min(a, b); });
  }
  return shortest;
}

Times TimesOfSlots() {
  fakes::Configurations configuration = Configuration();
  HistorianImpl historian;
  CyclicProbabilityPredictor predictor(&configuration, &historian);
  return PlayYear(predictor);
}

Times TimesOfRates() {
  fakes::Configurations configuration = Configuration();
  HistorianImpl historian;
  KnownRates blank;
  blank.state = std::make_unique<RatesState>();
  LastingRatesPredictor predictor(
      &configuration, &historian, [] { return true; }, {}, std::move(blank));
  return PlayYear(predictor);
}

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

void Run() {
  const Times slots = ShortestOf(TimesOfSlots);
  const Times rates = ShortestOf(TimesOfRates);
  std::printf("%-17s %13s %13s %8s\n", "", "slots", "rates", "ratio");
  Print("suspend", slots.suspends, rates.suspends);
  Print("resume", slots.resumes, rates.resumes);
  constexpr int kSlots = 7 * 144;
  std::printf("learnt: slots %lld bytes, rates %zu bytes beside them\n",
              static_cast<long long>(TrackerDataSize(kSlots)), sizeof(RatesState));
}

}  // namespace
}  // namespace dozewell

int main() { dozewell::Run(); }
