// Compares how long predictions take with a plain reading of the same rules in the same run.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <exception>
#include <map>
#include <string>
#include <vector>

#include "fakes/configurations_fake.h"
#include "plain_tracker.h"
#include "played_year.h"
#include "prediction/arbitrary_cycle_probability_tracker.h"

namespace dozewell {
namespace {

using Clock = std::chrono::steady_clock;

fakes::Configurations Configuration(int64_t minutesPerSlot, bool grouped) {
  fakes::Configurations configuration;
  configuration.timeResolution = static_cast<uint32_t>(minutesPerSlot);
  configuration.values["DayGrouping"] = grouped ? "12" : "0";
  return configuration;
}

ArbitraryCycleProbabilityTracker NewTracker(fakes::Configurations& configuration,
                                            ArbitraryCycleProbabilityTracker*) {
  return ArbitraryCycleProbabilityTracker(&configuration);
}

PlainTracker NewTracker(fakes::Configurations& configuration, PlainTracker*) {
  return PlainTracker(configuration);
}

template <typename Tracker>
Tracker NewTracker(fakes::Configurations& configuration) {
  return NewTracker(configuration, static_cast<Tracker*>(nullptr));
}

template <typename Tracker>
void Learn(Tracker& tracker, const std::vector<TimeLineEvent>& events) {
  for (const TimeLineEvent& event : events) tracker.ProcessEvent(event);
}

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

// GetPredictions at every full hour of a week, after a year of learning.
template <typename Tracker>
void LearntWeek(benchmark::State& state) {
  fakes::Configurations configuration = Configuration(state.range(0), state.range(1) != 0);
  Tracker tracker = NewTracker<Tracker>(configuration);
  Learn(tracker, PlayedYear());
  std::vector<tm> hours(7 * 24);
  for (size_t i = 0; i < hours.size(); ++i) {
    TmFromSeconds(int64_t{20818} * 86400 + static_cast<int64_t>(i) * 3600, hours[i]);
  }
  for (auto _ : state) {
    for (const tm& hour : hours) benchmark::DoNotOptimize(tracker.GetPredictions(hour));
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(hours.size()));
}

// GetPredictions when nothing is known yet, which is the least that a call can cost.
template <typename Tracker>
void NothingKnown(benchmark::State& state) {
  fakes::Configurations configuration = Configuration(state.range(0), state.range(1) != 0);
  Tracker tracker = NewTracker<Tracker>(configuration);
  tm now;
  TmFromSeconds(int64_t{20818} * 86400 + 12345, now);
  for (auto _ : state) benchmark::DoNotOptimize(tracker.GetPredictions(now));
}

// GetPredictions when every slot is in use, so that the whole cycle is searched in vain.
template <typename Tracker>
void NothingFound(benchmark::State& state) {
  fakes::Configurations configuration = Configuration(state.range(0), state.range(1) != 0);
  Tracker tracker = NewTracker<Tracker>(configuration);
  TimeLineEvent event = {{}, Activating};
  for (int64_t day = 0; day < 30; ++day) {
    TmFromSeconds((20454 + day) * 86400 + 1, event.time);
    event.state = Activating;
    tracker.ProcessEvent(event);
    TmFromSeconds((20455 + day) * 86400 - 1, event.time);
    event.state = Suspend;
    tracker.ProcessEvent(event);
  }
  for (auto _ : state) benchmark::DoNotOptimize(tracker.GetPredictions(event.time));
}

// GetPredictions at each suspend of a year that begins with a blank tracker. Learning between the
// suspends is not timed.
template <typename Tracker>
void SuspendsOfAYear(benchmark::State& state) {
  constexpr int kRepeats = 8;  // so that reading the clock hardly counts
  const std::vector<TimeLineEvent> events = PlayedYear();
  for (auto _ : state) {
    fakes::Configurations configuration = Configuration(state.range(0), state.range(1) != 0);
    Tracker tracker = NewTracker<Tracker>(configuration);
    double seconds = 0;
    for (const TimeLineEvent& event : events) {
      if (event.state == Suspend) {
        const auto start = Clock::now();
        for (int i = 0; i < kRepeats; ++i) {
          benchmark::DoNotOptimize(tracker.GetPredictions(event.time));
        }
        seconds += SecondsSince(start) / kRepeats;
      }
      tracker.ProcessEvent(event);
    }
    state.SetIterationTime(seconds);
  }
}

// The same year with everything timed: learning every event and predicting at each suspend.
template <typename Tracker>
void YearWithLearning(benchmark::State& state) {
  const std::vector<TimeLineEvent> events = PlayedYear();
  for (auto _ : state) {
    fakes::Configurations configuration = Configuration(state.range(0), state.range(1) != 0);
    Tracker tracker = NewTracker<Tracker>(configuration);
    for (const TimeLineEvent& event : events) {
      if (event.state == Suspend) benchmark::DoNotOptimize(tracker.GetPredictions(event.time));
      tracker.ProcessEvent(event);
    }
  }
}

template <typename Tracker>
void Register(const char* kind) {
  const auto add = [kind](const char* name, auto function) {
    const auto registered =
        benchmark::RegisterBenchmark((std::string(name) + "/" + kind).c_str(), function);
    registered->ArgNames({"minutes", "grouped"})->ArgsProduct({{10, 1}, {0, 1}});
    return registered;
  };
  add("LearntWeek", LearntWeek<Tracker>);
  add("NothingKnown", NothingKnown<Tracker>);
  add("NothingFound", NothingFound<Tracker>);
  add("SuspendsOfAYear", SuspendsOfAYear<Tracker>)->UseManualTime();
  add("YearWithLearning", YearWithLearning<Tracker>);
}

// Remembers each benchmark's time, for the ratios at the end.
class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) times_[run.benchmark_name()] = run.GetAdjustedRealTime();
    ConsoleReporter::ReportRuns(runs);
  }

  void PrintRatios() const {
    std::printf("\n%-52s %s\n", "Plain reading / tracker", "ratio");
    for (const auto& [name, time] : times_) {
      const size_t kind = name.find("/plain");
      if (kind == std::string::npos) continue;
      std::string other = name;
      other.replace(kind, 6, "/tracker");
      const auto found = times_.find(other);
      if (found == times_.end()) continue;
      std::printf("%-52s %.1f\n", name.c_str(), time / found->second);
    }
  }

 private:
  std::map<std::string, double> times_;
};

// The shortest of several timings of one call, since other work of the machine only makes them
// longer. Each timing repeats the call.
template <typename Tracker>
double TimeOfPrediction(Tracker& tracker, const tm& now) {
  constexpr int kTimings = 9;
  constexpr int kRepeats = 16;
  double shortest = 1e9;
  for (int timing = 0; timing < kTimings; ++timing) {
    const auto start = Clock::now();
    for (int i = 0; i < kRepeats; ++i) benchmark::DoNotOptimize(tracker.GetPredictions(now));
    shortest = std::min(shortest, SecondsSince(start) / kRepeats);
  }
  return shortest;
}

// Runs both trackers side by side through a year. Prints the ratio at the suspend at which the
// plain reading takes longest, and the lowest ratio of all suspends.
void CompareSuspends(int minutesPerSlot, bool grouped) {
  fakes::Configurations configuration = Configuration(minutesPerSlot, grouped);
  auto tracker = NewTracker<ArbitraryCycleProbabilityTracker>(configuration);
  auto plain = NewTracker<PlainTracker>(configuration);
  double slowest = 0;
  double ratioAtSlowest = 0;
  double lowestRatio = 1e9;
  for (const TimeLineEvent& event : PlayedYear()) {
    if (event.state == Suspend) {
      const double plainSeconds = TimeOfPrediction(plain, event.time);
      const double ratio = plainSeconds / TimeOfPrediction(tracker, event.time);
      lowestRatio = std::min(lowestRatio, ratio);
      if (plainSeconds > slowest) {
        slowest = plainSeconds;
        ratioAtSlowest = ratio;
      }
    }
    tracker.ProcessEvent(event);
    plain.ProcessEvent(event);
  }
  std::printf("%2d minutes, %-11s  at the slowest suspend %7.1f, lowest of all suspends %5.2f\n",
              minutesPerSlot, grouped ? "grouped:" : "not grouped:", ratioAtSlowest, lowestRatio);
}

int Run(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  Register<PlainTracker>("plain");
  Register<ArbitraryCycleProbabilityTracker>("tracker");
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.PrintRatios();
  std::printf("\nPlain reading / tracker, suspend by suspend of a year\n");
  for (const int minutesPerSlot : {10, 1}) {
    for (const bool grouped : {false, true}) CompareSuspends(minutesPerSlot, grouped);
  }
  return 0;
}

}  // namespace
}  // namespace dozewell

int main(int argc, char** argv) {
  try {
    return dozewell::Run(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "predictions_bench: %s\n", error.what());
    return 1;
  }
}
