// Compares how long a whole search takes with a plain reading of the same rules in the same run,
// and measures how soon it ends after a stop request.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "common/sample_history.h"
#include "optimizer/grid/grid_simulator.h"
#include "optimizer/parameter_ranges.h"
#include "optimizer/parameter_search.h"
#include "optimizer/simulator/simulator.h"
#include "optimizer/simulator/stop_request.h"
#include "plain_simulator.h"

namespace dozewell {
namespace {

using Clock = std::chrono::steady_clock;
using History = std::vector<HistoryRecord>;

const std::vector<int32_t> kScoringWeights = {0, 25, 50, 75, 100};

std::vector<int32_t> Numbers(int32_t first, int32_t step, int count) {
  std::vector<int32_t> numbers;
  numbers.reserve(static_cast<size_t>(count));
  for (int i = 0; i < count; ++i) numbers.push_back(first + i * step);
  return numbers;
}

// Likely groupings of the days of the week come first.
std::vector<int32_t> DayGroupings(int count) {
  std::vector<int32_t> groupings = {0, 12, 255, 4, 8, 2, 16, 14, 28, 20};
  groupings.resize(static_cast<size_t>(count));
  return groupings;
}

struct NamedGrid {
  const char* shape;
  ParameterGrid grid;
};

ParameterGrid Grid(int highs, int lows, int firstWeights, int secondWeights, int groupings) {
  return BuildParameterGrid({Numbers(50, 40 / highs, highs), Numbers(5, 40 / lows, lows),
                             Numbers(5, 40 / firstWeights, firstWeights),
                             Numbers(5, 40 / secondWeights, secondWeights),
                             DayGroupings(groupings)});
}

History OfficeHistory(int days) { return MakeSampleHistory(*FindSampleKind("office"), days, 1); }

Outcomes Baseline(const History& history) {
  Outcomes outcomes;
  CountOutcomes(SimulateFixedTimeout(history, 600), outcomes);
  return outcomes;
}

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

// The shortest of several timings, since other work of the machine only makes them longer.
template <typename Work>
double ShortestSeconds(int timings, Work work) {
  double shortest = 1e9;
  for (int i = 0; i < timings; ++i) {
    const auto start = Clock::now();
    work();
    shortest = std::min(shortest, SecondsSince(start));
  }
  return shortest;
}

double SearchSeconds(const ParameterGrid& grid, const History& history) {
  constexpr double kSecondsOfTimings = 0.3;
  const Outcomes baseline = Baseline(history);
  const auto search = [&] {
    if (!SearchParameters(history, baseline, grid, kScoringWeights)) std::abort();
  };
  const double once = ShortestSeconds(1, search);
  return std::min(once, ShortestSeconds(2 + static_cast<int>(kSecondsOfTimings / once), search));
}

// Seconds per set, averaged over sets from all parts of the grid.
template <typename Simulate>
double SecondsPerSet(const ParameterGrid& grid, Simulate simulate) {
  constexpr uint64_t kSets = 100;
  constexpr int kTimings = 5;
  // Steps of a prime number reach all values of all parameters.
  constexpr uint64_t kStep = 1009;
  double seconds = 0;
  for (uint64_t i = 0; i < kSets; ++i) {
    NativeSimulatorConfigurations parameters =
        ConfigurationsOf(grid.SetAt(i * kStep % grid.Size()));
    seconds += ShortestSeconds(kTimings, [&] { simulate(parameters); });
  }
  return seconds / kSets;
}

bool SameAsPlain(const ParameterGrid& grid, const History& history) {
  std::vector<Outcomes> outcomes(grid.Size());
  const bool shared =
      GridSimulator(grid, history).Simulate([&](uint64_t position, const Outcomes& counted) {
        outcomes[position] = counted;
      });
  if (!shared) return false;
  for (uint64_t position = 0; position < grid.Size(); ++position) {
    NativeSimulatorConfigurations parameters = ConfigurationsOf(grid.SetAt(position));
    Outcomes plain;
    CountOutcomes(SimulatePlainly(parameters, history), plain);
    if (outcomes[position] != plain) return false;
  }
  return true;
}

void PrintRatio(const char* shape, const ParameterGrid& grid, const History& history) {
  Outcomes outcomes;
  const double plain = SecondsPerSet(grid, [&](NativeSimulatorConfigurations& parameters) {
    CountOutcomes(SimulatePlainly(parameters, history), outcomes);
  });
  const double oneByOne = SecondsPerSet(grid, [&](NativeSimulatorConfigurations& parameters) {
    CountOutcomes(SimulatePredictor(parameters, history), outcomes);
  });
  const double atOnce = SearchSeconds(grid, history) / static_cast<double>(grid.Size());
  std::printf("%-34s %8llu %12.1f %12.1f %12.3f %10.0f\n", shape,
              static_cast<unsigned long long>(grid.Size()), plain * 1e6, oneByOne * 1e6,
              atOnce * 1e6, plain / atOnce);
}

// Milliseconds from the stop request to the return of a search that had run for `secondsBefore`.
double MillisecondsToStop(const ParameterGrid& grid, const History& history, double secondsBefore) {
  const Outcomes baseline = Baseline(history);
  Clock::time_point requested;
  std::thread requester([&] {
    std::this_thread::sleep_for(std::chrono::duration<double>(secondsBefore));
    requested = Clock::now();
    OptimizerStopRequested = true;
  });
  const bool stopped = !SearchParameters(history, baseline, grid, kScoringWeights);
  const Clock::time_point returned = Clock::now();
  requester.join();
  OptimizerStopRequested = false;
  return stopped ? std::chrono::duration<double, std::milli>(returned - requested).count() : 0;
}

void PrintStops(const ParameterGrid& grid) {
  constexpr int kRequests = 50;
  std::printf(
      "Milliseconds from a stop request to the end of a search of %llu sets\n%-10s %10s %10s\n",
      static_cast<unsigned long long>(grid.Size()), "days", "median", "longest");
  for (const int days : {60, 365, 3650}) {
    const History history = OfficeHistory(days);
    const double whole = SearchSeconds(grid, history);
    std::vector<double> milliseconds;
    milliseconds.reserve(kRequests);
    for (int i = 0; i < kRequests; ++i) {
      milliseconds.push_back(MillisecondsToStop(grid, history, whole * i / kRequests));
    }
    std::sort(milliseconds.begin(), milliseconds.end());
    std::printf("%-10d %10.2f %10.2f\n", days, milliseconds[kRequests / 2], milliseconds.back());
  }
}

}  // namespace
}  // namespace dozewell

int main(int argc, char** argv) {
  using namespace dozewell;
  const bool verify = argc == 2 && std::strcmp(argv[1], "--verify") == 0;
  const bool stops = argc == 2 && std::strcmp(argv[1], "--stop") == 0;
  if (argc > 1 && !verify && !stops) {
    std::fprintf(stderr, "Usage: optimizer_bench [--verify | --stop]\n");
    return 2;
  }
  const ParameterGrid largest = Grid(16, 16, 10, 8, 5);
  if (stops) {
    PrintStops(largest);
    return 0;
  }
  // High and low thresholds, first and second weights, day groupings.
  const NamedGrid grids[] = {
      {"4 x 5, 4 x 4, 3: balanced", Grid(4, 5, 4, 4, 3)},
      {"2 x 2, 8 x 6, 5: few thresholds", Grid(2, 2, 8, 6, 5)},
      {"8 x 8, 6 x 6, 5: balanced", Grid(8, 8, 6, 6, 5)},
      {"12 x 12, 4 x 4, 5: balanced", Grid(12, 12, 4, 4, 5)},
      {"3 x 3, 13 x 10, 10: few thresholds", Grid(3, 3, 13, 10, 10)},
      {"20 x 20, 4 x 4, 2: many thresholds", Grid(20, 20, 4, 4, 2)},
  };
  const History sixtyDays = OfficeHistory(60);
  if (verify) {
    for (const NamedGrid& named : grids) {
      const bool same = SameAsPlain(named.grid, sixtyDays);
      std::printf("%-34s %8llu sets: %s\n", named.shape,
                  static_cast<unsigned long long>(named.grid.Size()),
                  same ? "identical to the plain reading" : "DIFFERENT");
      if (!same) return 1;
    }
    return 0;
  }
  std::printf("60 days in an office, %zu records; microseconds per set\n", sixtyDays.size());
  std::printf("%-34s %8s %12s %12s %12s %10s\n", "Grid", "sets", "plain", "one by one", "search",
              "ratio");
  for (const NamedGrid& named : grids) PrintRatio(named.shape, named.grid, sixtyDays);

  std::printf("\nMilliseconds of a whole search\n%-10s", "days");
  const ParameterGrid bySize[] = {Grid(5, 5, 4, 4, 3), Grid(8, 10, 5, 5, 5), largest};
  for (const ParameterGrid& grid : bySize) {
    std::printf(" %9llu sets", static_cast<unsigned long long>(grid.Size()));
  }
  std::printf("\n");
  for (const int days : {60, 365, 3650}) {
    const History history = OfficeHistory(days);
    std::printf("%-10d", days);
    for (const ParameterGrid& grid : bySize) {
      std::printf(" %14.2f", SearchSeconds(grid, history) * 1e3);
    }
    std::printf("\n");
  }
}
