// Loads a data file of any content under one of several cycles, learns more, predicts, explains and
// saves.

#include <array>
#include <cstring>
#include <exception>
#include <iterator>

#include "common/explanation.h"
#include "fakes/configurations_fake.h"
#include "fuzz/input.h"
#include "fuzz/memory_files.h"
#include "prediction/cyclic_probability_predictor.h"

namespace dozewell {
namespace {

constexpr const wchar_t* kPath = L"cpredict.z7";

struct Cycle {
  const char* daysInCycle;
  const char* minutesInDay;
  uint32_t minutesPerSlot;
  const char* dayGrouping;
};
constexpr Cycle kCycles[] = {
    {"7", "60", 10, "12"}, {"7", "60", 10, "0"},   {"7", "30", 15, "85"}, {"3", "60", 5, "12"},
    {"1", "90", 45, "0"},  {"-7", "-60", 10, "0"}, {"1", "1", 1, "0"},    {"7", "240", 1, "1"},
};

// The header fits the cycle, so that random content is loaded instead of ignored.
std::vector<unsigned char> FittingFile(const CycleShape& shape, fuzz::Input& input) {
  TrackerData header = input.Take<TrackerData>();
  header.version = 0;
  header.daysInCycle = shape.daysInCycle;
  header.minutesInDay = shape.minutesInDay;
  header.minutesPerSlot = shape.minutesPerSlot;
  header.slotCount = shape.SlotCount();
  std::vector<unsigned char> file(static_cast<size_t>(TrackerDataSize(header.slotCount)));
  std::memcpy(file.data(), &header, sizeof(header));
  for (size_t offset = sizeof(header); offset < file.size(); offset += sizeof(SlotRecord)) {
    // Small numbers make the difference, so four bytes of input are enough for a slot.
    const auto small = input.Take<std::array<int8_t, 4>>();
    const SlotRecord slot = {small[0], small[1], small[2], small[3], kNone};
    std::memcpy(file.data() + offset, &slot, sizeof(slot));
  }
  return file;
}

void Run(fuzz::Input input) {
  const Cycle& cycle = kCycles[input.Take<uint8_t>() % std::size(kCycles)];
  fakes::Configurations configuration;
  configuration.values["DaysInCycle"] = cycle.daysInCycle;
  configuration.values["MinutesInDay"] = cycle.minutesInDay;
  configuration.values["DayGrouping"] = cycle.dayGrouping;
  configuration.values["FirstLastWeight"] = std::to_string(input.Take<int8_t>());
  configuration.timeResolution = cycle.minutesPerSlot;
  const CycleShape shape = {std::stoi(cycle.daysInCycle), std::stoi(cycle.minutesInDay),
                            static_cast<int32_t>(cycle.minutesPerSlot)};
  std::vector<TimeLineEvent> events(input.Take<uint8_t>() % 8);
  for (TimeLineEvent& event : events) event = input.Take<TimeLineEvent>();
  fuzz::files[kPath] =
      input.Take<uint8_t>() % 2 == 0 ? input.TakeRest() : FittingFile(shape, input);

  HistorianImpl historian;
  CyclicProbabilityPredictor predictor(&configuration, &historian, kPath);
  for (const TimeLineEvent& event : events) {
    try {
      historian.NotifyListener(event);
    } catch (const std::exception&) {
      // After a refused event everything must still work.
    }
    predictor.GetPredictions(event.time);
    predictor.PredictWake(event.time);
  }
  for (int slot = -1; slot <= shape.SlotCount(); ++slot) predictor.GetSlotProbability(slot);

  LoadedData loaded = LoadDataIfExists(configuration, kPath);
  if (!loaded.data) return;
  ArbitraryCycleProbabilityTracker tracker(&configuration, std::move(loaded.data));
  tm now;
  TmFromSeconds(1795219200, now);
  ExplanationText(Explain(tracker, now));
}

}  // namespace
}  // namespace dozewell

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  try {
    dozewell::Run({data, size});
  } catch (const std::exception&) {
    // A file may be refused.
  }
  return 0;
}
