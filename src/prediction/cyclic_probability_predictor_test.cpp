#include "prediction/cyclic_probability_predictor.h"

#include <doctest/doctest.h>

#include <cstring>
#include <stdexcept>

#include "base/exception.h"
#include "base/file.h"
#include "fakes/configurations_fake.h"
#include "prediction/arbitrary_cycle_probability_tracker.h"
#include "support/local_times.h"
#include "support/temp_folder.h"

namespace dozewell {
namespace {

constexpr TimeLineEvent kStop = {{}, ContainerStopped};

// A folder, a configuration that names it, and a historian.
struct SavingEngine {
  TempFolder folder;
  fakes::Configurations configuration;
  HistorianImpl historian;

  SavingEngine() { configuration.dataFolder = folder.Path(); }

  std::wstring DataFile() const { return folder.File(L"cpredict.z7"); }
  std::vector<unsigned char> Bytes() const { return ReadWholeFile(DataFile()).value(); }
  void SetBytes(const std::vector<unsigned char>& bytes) const {
    REQUIRE(WriteWholeFile(DataFile(), bytes.data(), bytes.size()));
  }
  // Writes a data file in which Thursday 10:00 to 12:00 is learnt as in use.
  void LearnAndSave() {
    CyclicProbabilityPredictor predictor(&configuration, &historian);
    historian.NotifyListener({WeekTime(0, 10), Activating});
    historian.NotifyListener({WeekTime(0, 12), Suspend});
    historian.NotifyListener(kStop);
  }
  // Loads the data file and checks whether a predictor knows its content.
  DataFileState LoadAndCheckKnown(bool known) {
    CyclicProbabilityPredictor predictor(&configuration, &historian);
    CHECK(predictor.GetSlotProbability(41) == (known ? 1.0F : -1.0F));
    return predictor.LoadState();
  }
};

}  // namespace

TEST_CASE("without a data file the predictor is blank, and the container's stop makes one") {
  SavingEngine engine;
  CHECK(engine.LoadAndCheckKnown(false) == DataFileState::NotOpened);
  CHECK(engine.folder.IsEmpty());
  CyclicProbabilityPredictor predictor(&engine.configuration, &engine.historian);
  engine.historian.NotifyListener(kStop);
  CHECK(engine.Bytes().size() == 16192);
}

TEST_CASE("a predictor starts with what was saved in the data file") {
  SavingEngine engine;
  engine.LearnAndSave();
  const std::vector<unsigned char> bytes = engine.Bytes();
  TrackerData header;
  std::memcpy(&header, bytes.data(), sizeof(header));
  CHECK(header.version == 0);
  CHECK(header.lastState == Suspend);
  CHECK(header.lastTime == WeekTime(0, 12));
  CHECK(header.slotCount == 672);
  CHECK(engine.LoadAndCheckKnown(true) == DataFileState::Loaded);
  CyclicProbabilityPredictor predictor(&engine.configuration, &engine.historian);
  engine.historian.NotifyListener(kStop);
  CHECK(engine.Bytes() == bytes);
}

TEST_CASE("after a container's stop before any event, the first event only records") {
  SavingEngine engine;
  {
    const CyclicProbabilityPredictor predictor(&engine.configuration, &engine.historian);
    engine.historian.NotifyListener(kStop);
  }
  CyclicProbabilityPredictor predictor(&engine.configuration, &engine.historian);
  CHECK(predictor.LoadState() == DataFileState::Loaded);
  engine.historian.NotifyListener({WeekTime(0, 10), Activating});
  for (int slot = 0; slot < 672; ++slot) REQUIRE(predictor.GetSlotProbability(slot) == -1.0F);
  engine.historian.NotifyListener(kStop);
  TrackerData header;
  std::memcpy(&header, engine.Bytes().data(), sizeof(header));
  CHECK(header.lastState == Activating);
  CHECK(header.lastTime == WeekTime(0, 10));
}

TEST_CASE("after a container's stop the stretch under way goes on in the next predictor") {
  SavingEngine engine;
  {
    const CyclicProbabilityPredictor predictor(&engine.configuration, &engine.historian);
    engine.historian.NotifyListener({WeekTime(0, 10), Activating});
    engine.historian.NotifyListener(kStop);
  }
  CyclicProbabilityPredictor predictor(&engine.configuration, &engine.historian);
  engine.historian.NotifyListener({WeekTime(0, 12), Suspend});
  for (int slot = 0; slot < 672; ++slot) {
    REQUIRE(predictor.GetSlotProbability(slot) == (slot >= 40 && slot <= 48 ? 1.0F : -1.0F));
  }
}

TEST_CASE("a data file of another size is ignored and kept") {
  SavingEngine engine;
  engine.LearnAndSave();
  const std::vector<unsigned char> bytes = engine.Bytes();
  for (const size_t size : {16191, 16193}) {
    std::vector<unsigned char> other = bytes;
    other.resize(size);
    engine.SetBytes(other);
    CHECK(engine.LoadAndCheckKnown(false) == DataFileState::WrongSize);
    CHECK(engine.Bytes() == other);
  }
  engine.SetBytes({});
  CHECK(engine.LoadAndCheckKnown(false) == DataFileState::WrongSize);
}

TEST_CASE("a data file written with another time resolution is ignored") {
  SavingEngine engine;
  engine.LearnAndSave();
  engine.configuration.timeResolution = 10;
  CHECK(engine.LoadAndCheckKnown(false) == DataFileState::WrongSize);
  // The same size for another cycle.
  engine.configuration.timeResolution = 30;
  engine.configuration.values["DaysInCycle"] = "14";
  CHECK(engine.LoadAndCheckKnown(false) == DataFileState::OtherConfiguration);
}

TEST_CASE("a data file whose slot count does not fit its size is ignored") {
  SavingEngine engine;
  engine.LearnAndSave();
  std::vector<unsigned char> bytes = engine.Bytes();
  for (const unsigned char low :
       std::vector<unsigned char>{0x9F, 0xA1}) {  // 671 and 673 instead of 672
    bytes[56] = low;
    engine.SetBytes(bytes);
    CHECK(engine.LoadAndCheckKnown(false) == DataFileState::WrongShape);
  }
}

TEST_CASE("a data file of another version fails the construction, which registers nothing") {
  SavingEngine engine;
  engine.LearnAndSave();
  std::vector<unsigned char> bytes = engine.Bytes();
  bytes[0] = 1;
  engine.SetBytes(bytes);
  CHECK_THROWS_WITH_AS(CyclicProbabilityPredictor(&engine.configuration, &engine.historian),
                       "Version 0 expected", FixedTextException);
  CHECK_FALSE(engine.historian.HasListener());
  CHECK(engine.configuration.listener == nullptr);
}

TEST_CASE("a configuration without a cycle fails before the data file is looked at") {
  constexpr const char* kWrong =
      "CyclicProbabilityPredictor::LoadDataIfExists - wrong configurations";
  SavingEngine engine;
  engine.configuration.values["FirstLastWeight"] = "";
  const auto build = [&engine] {
    CyclicProbabilityPredictor(&engine.configuration, &engine.historian);
  };
  engine.configuration.values["DaysInCycle"] = "0";
  CHECK_THROWS_WITH_AS(build(), kWrong, FixedTextException);
  engine.configuration.values["DaysInCycle"] = "7";
  engine.configuration.values["MinutesInDay"] = "0";
  CHECK_THROWS_WITH_AS(build(), kWrong, FixedTextException);
  engine.configuration.values["MinutesInDay"] = "1440";
  engine.configuration.timeResolution = kNoTimeResolution;
  CHECK_THROWS_WITH_AS(build(), kWrong, FixedTextException);
  engine.configuration.timeResolution = 15;
  CHECK_THROWS_WITH_AS(build(), "No weigths specified", FixedTextException);
  engine.configuration.values["FirstLastWeight"] = "2";
  engine.configuration.timeResolution = 0;
  CHECK_THROWS_WITH_AS(build(), "ArbitraryCycleProbabilityTracker - wrong configurations",
                       FixedTextException);
}

TEST_CASE("a data folder gets the backslash that it lacks, and an empty one is refused") {
  SavingEngine engine;
  engine.LearnAndSave();
  engine.configuration.dataFolder = engine.folder.Path() + L"\\";
  CHECK(engine.LoadAndCheckKnown(true) == DataFileState::Loaded);
  engine.configuration.dataFolder.clear();
  CHECK_THROWS_WITH_AS(CyclicProbabilityPredictor(&engine.configuration, &engine.historian),
                       "invalid string position", std::out_of_range);
}

TEST_CASE("a data file that cannot be written is skipped without an error") {
  SavingEngine engine;
  engine.configuration.dataFolder = engine.folder.File(L"missing");
  CyclicProbabilityPredictor predictor(&engine.configuration, &engine.historian);
  CHECK_NOTHROW(engine.historian.NotifyListener(kStop));
  CHECK(engine.folder.IsEmpty());
}

TEST_CASE("the predictor listens to historian and configuration for as long as it lives") {
  SavingEngine engine;
  {
    CyclicProbabilityPredictor predictor(&engine.configuration, &engine.historian);
    CHECK(engine.historian.HasListener());
    CHECK(engine.configuration.listener == &predictor);
  }
  CHECK_FALSE(engine.historian.HasListener());
  CHECK(engine.configuration.listener == nullptr);
  CHECK_NOTHROW(engine.historian.NotifyListener({WeekTime(0, 10), Activating}));
}

TEST_CASE("the tracker is told of a changed configuration") {
  SavingEngine engine;
  engine.LearnAndSave();
  CyclicProbabilityPredictor predictor(&engine.configuration, &engine.historian);
  const tm now = WeekTime(0, 10);
  CHECK(predictor.PredictWake(now).size() == 1);
  engine.configuration.values["StrengthHigh"] = "200";
  engine.configuration.listener->OnConfigurationChanged("Strength");
  CHECK(predictor.PredictWake(now).empty());
}

TEST_CASE("predictions are the tracker's") {
  SavingEngine engine;
  CyclicProbabilityPredictor predictor(&engine.configuration, &engine.historian);
  ArbitraryCycleProbabilityTracker tracker(&engine.configuration);
  // Twice the same week: in use on Thursday from 10:00 to 12:00.
  for (int week = 0; week < 3; ++week) {
    for (const TimeLineEvent& event : {TimeLineEvent{WeekTime(7 * week, 10), Activating},
                                       TimeLineEvent{WeekTime(7 * week, 12), Suspend}}) {
      predictor.OnTimeLineEvent(event);
      tracker.ProcessEvent(event);
    }
  }
  const tm now = WeekTime(14, 12);
  const auto predictions = predictor.GetPredictions(now);
  REQUIRE(predictions.size() == 2);
  CHECK(predictions[0].time == now);
  CHECK(predictions[0].minutes == 15);
  CHECK(predictions[1].time == WeekTime(21, 10));
  CHECK(predictions[1].minutes == 135);
  CHECK(predictor.PredictHibernate(now)[0].minutes == 15);
  CHECK(predictor.PredictWake(now)[0].time == WeekTime(21, 10));
  for (int slot = 0; slot < 672; ++slot) {
    REQUIRE(predictor.GetSlotProbability(slot) == tracker.GetSlotProbability(slot));
  }
}

TEST_CASE("the exception for an event that the tracker refuses goes to the historian's caller") {
  SavingEngine engine;
  CyclicProbabilityPredictor predictor(&engine.configuration, &engine.historian);
  engine.historian.NotifyListener({WeekTime(0, 10), Activating});
  CHECK_THROWS_WITH_AS(engine.historian.NotifyListener({WeekTime(0, 9), Suspend}),
                       "state start is later than state end", FixedTextException);
}

}  // namespace dozewell
