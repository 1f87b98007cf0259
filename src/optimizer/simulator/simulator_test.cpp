#include "optimizer/simulator/simulator.h"

#include <doctest/doctest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "base/exception.h"
#include "optimizer/simulator/stop_request.h"
#include "support/sim_days.h"

namespace dozewell {
namespace {

using History = std::vector<HistoryRecord>;
using Texts = std::vector<std::string>;

constexpr uint32_t kUse = 0;
constexpr uint32_t kSleep = 1;
constexpr uint32_t kHibernation = 2;
constexpr uint32_t kLimbo = 3;

// A cycle of one day, in which a slot counts as in use when it was in use the last time.
NativeSimulatorConfigurations Daily() {
  return {kSimulatedDataPath, "1", "2", "1", "1", "50", "50", "0"};
}

// Use from 8 to 12 and from 13 to 18. After one such day, a sleep in the morning is predicted to be
// idle from 12:10, in use again at 13:00 and idle from 18:10.
History FirstDay() {
  return {SimRecord(kUse, 0, 8), SimRecord(kSleep, 0, 12), SimRecord(kUse, 0, 13),
          SimRecord(kSleep, 0, 18), SimRecord(kUse, 1, 8)};
}

History AfterFirstDay(const History& more) {
  History history = FirstDay();
  history.insert(history.end(), more.begin(), more.end());
  return history;
}

// The time line without the first day and the use that ends it.
Texts SecondDay(const History& more) {
  NativeSimulatorConfigurations parameters = Daily();
  const Texts texts = SimTexts(SimulatePredictor(parameters, AfterFirstDay(more)));
  const Texts first = {"0 08:00 0", "0 12:00 2", "0 13:00 0", "0 18:00 2", "1 08:00 0"};
  REQUIRE(texts.size() >= first.size());
  CHECK(Texts(texts.begin(), texts.begin() + 5) == first);
  return {texts.begin() + 5, texts.end()};
}

Texts FixedTimeout(const History& history, int64_t timeoutSeconds) {
  return SimTexts(SimulateFixedTimeout(history, timeoutSeconds));
}

}  // namespace

TEST_CASE("a history of two records gives no time line") {
  const History history = {SimRecord(kUse, 0, 8), SimRecord(kSleep, 0, 12)};
  NativeSimulatorConfigurations parameters = Daily();
  CHECK(SimulateFixedTimeout(history, 600).empty());
  CHECK(SimulatePredictor(parameters, history).empty());
  // The codes are not even looked at.
  CHECK(SimulateFixedTimeout(History(2, SimRecord(9, 0, 8)), 600).empty());
  CHECK(SimulatePredictor(parameters, History(2, SimRecord(9, 0, 8))).empty());
}

TEST_CASE("a fixed timeout hibernates a sleep that lasts longer") {
  const History history = {SimRecord(kUse, 0, 8), SimRecord(kSleep, 0, 12), SimRecord(kUse, 0, 13),
                           SimRecord(kSleep, 0, 13, 30), SimRecord(kUse, 0, 13, 40)};
  CHECK(FixedTimeout(history, 600) ==
        Texts{"0 08:00 0", "0 12:00 2", "0 12:10 3", "0 13:00 0", "0 13:30 2", "0 13:40 0"});
  CHECK(FixedTimeout(history, 599) == Texts{"0 08:00 0", "0 12:00 2", "0 12:09:59 3", "0 13:00 0",
                                            "0 13:30 2", "0 13:39:59 3", "0 13:40 0"});
}

TEST_CASE("a fixed timeout below one second never hibernates") {
  const History history = {SimRecord(kUse, 0, 8), SimRecord(kSleep, 0, 12), SimRecord(kUse, 0, 13)};
  const Texts never = {"0 08:00 0", "0 12:00 2", "0 13:00 0"};
  CHECK(FixedTimeout(history, 0) == never);
  CHECK(FixedTimeout(history, -600) == never);
  CHECK(FixedTimeout(history, 1) == Texts{"0 08:00 0", "0 12:00 2", "0 12:00:1 3", "0 13:00 0"});
}

TEST_CASE("with a fixed timeout a sleep at the end of the history is not hibernated") {
  CHECK(FixedTimeout({SimRecord(kSleep, 0, 8), SimRecord(kUse, 0, 12), SimRecord(kSleep, 0, 13)},
                     600) == Texts{"0 08:00 2", "0 08:10 3", "0 12:00 0", "0 13:00 2"});
}

TEST_CASE("with a fixed timeout codes of one state in a row are collapsed") {
  CHECK(FixedTimeout(
            {SimRecord(kUse, 0, 8), SimRecord(kUse, 0, 9), SimRecord(kSleep, 0, 12),
             SimRecord(kHibernation, 0, 13), SimRecord(kLimbo, 0, 14), SimRecord(kUse, 0, 15)},
            3 * 3600 - 1) == Texts{"0 08:00 0", "0 12:00 2", "0 14:59:59 3", "0 15:00 0"});
}

TEST_CASE("fractions of a second are dropped") {
  History history = {SimRecord(kUse, 0, 8), SimRecord(kSleep, 0, 12), SimRecord(kUse, 0, 12, 10)};
  history[1].time += 0.25;
  history[2].time += 0.75;
  CHECK(FixedTimeout(history, 600) == Texts{"0 08:00 0", "0 12:00 2", "0 12:10 0"});
}

TEST_CASE("an unknown code ends both simulations") {
  History history = AfterFirstDay({SimRecord(4, 1, 12)});
  NativeSimulatorConfigurations parameters = Daily();
  CHECK_THROWS_WITH_AS(SimulateFixedTimeout(history, 600), "Unknown event in the history",
                       FixedTextException);
  // It throws before anything is replayed, even events that the tracker would refuse.
  history[1].time = history[0].time;
  CHECK_THROWS_WITH_AS(SimulatePredictor(parameters, history), "Unknown event in the history",
                       FixedTextException);
}

TEST_CASE("unusable parameters throw even when there is nothing to replay") {
  NativeSimulatorConfigurations weightless(kSimulatedDataPath, "7", "", "1", "1", "50", "50", "0");
  CHECK_THROWS_WITH_AS(SimulatePredictor(weightless, {}), "No weigths specified",
                       FixedTextException);
  NativeSimulatorConfigurations folderless(L"", "7", "1", "1", "1", "50", "50", "0");
  CHECK_THROWS_AS(SimulatePredictor(folderless, {}), std::out_of_range);
}

TEST_CASE("an event that the tracker refuses ends the simulation with its exception") {
  NativeSimulatorConfigurations parameters = Daily();
  const History equalTimes = {SimRecord(kUse, 0, 8), SimRecord(kSleep, 0, 8),
                              SimRecord(kUse, 0, 9)};
  CHECK_THROWS_WITH_AS(SimulatePredictor(parameters, equalTimes),
                       "state start is later than state end", FixedTextException);
  History tooLate = {SimRecord(kUse, 0, 8), SimRecord(kSleep, 0, 9), SimRecord(kUse, 0, 10)};
  tooLate[2].time = 1e12;
  CHECK_THROWS_WITH_AS(SimulatePredictor(parameters, tooLate), "wrong time ...",
                       FixedTextException);
}

TEST_CASE("nothing is scheduled while nothing is known, nor before the next use") {
  // The first day shows that nothing is scheduled while nothing is known.
  CHECK(SecondDay({SimRecord(kSleep, 1, 12), SimRecord(kUse, 1, 12, 10)}) ==
        Texts{"1 12:00 2", "1 12:10 0"});
}

TEST_CASE("a sleep hibernates, wakes back and hibernates again as predicted") {
  CHECK(SecondDay({SimRecord(kSleep, 1, 12), SimRecord(kUse, 1, 12, 10, 1)}) ==
        Texts{"1 12:00 2", "1 12:10 5", "1 12:10:1 0"});
  CHECK(SecondDay({SimRecord(kSleep, 1, 12), SimRecord(kUse, 1, 13)}) ==
        Texts{"1 12:00 2", "1 12:10 5", "1 13:00 0"});
  CHECK(SecondDay({SimRecord(kSleep, 1, 12), SimRecord(kUse, 1, 13, 0, 1)}) ==
        Texts{"1 12:00 2", "1 12:10 5", "1 13:00 6", "1 13:00:1 0"});
  CHECK(SecondDay({SimRecord(kSleep, 1, 12), SimRecord(kUse, 1, 18, 10)}) ==
        Texts{"1 12:00 2", "1 12:10 5", "1 13:00 6", "1 18:10 0"});
  CHECK(SecondDay({SimRecord(kSleep, 1, 12), SimRecord(kUse, 3, 9)}) ==
        Texts{"1 12:00 2", "1 12:10 5", "1 13:00 6", "1 18:10 5", "3 09:00 0"});
}

TEST_CASE("a predicted hibernation is rounded up to whole minutes from the sleep") {
  CHECK(SecondDay({SimRecord(kSleep, 1, 11, 59, 30), SimRecord(kUse, 1, 12, 59)}) ==
        Texts{"1 11:59:30 2", "1 12:10:30 5", "1 12:59 0"});
}

TEST_CASE("a history that ends asleep schedules nothing for its last sleep") {
  CHECK(SecondDay({SimRecord(kSleep, 1, 12)}) == Texts{"1 12:00 2"});
}

TEST_CASE("the predictor learns of a sleep after it was asked for predictions") {
  // At 9:00 it still expects use from 9:00 to 12:00, though the use has just ended.
  CHECK(SecondDay({SimRecord(kSleep, 1, 9), SimRecord(kUse, 1, 15)}) ==
        Texts{"1 09:00 2", "1 12:10 5", "1 13:00 6", "1 15:00 0"});
}

TEST_CASE("repeated codes are kept, so a second sleep bounds what the first one schedules") {
  CHECK(SecondDay({SimRecord(kUse, 1, 9), SimRecord(kSleep, 1, 12), SimRecord(kSleep, 1, 12, 5),
                   SimRecord(kUse, 1, 15)}) == Texts{"1 12:00 2", "1 15:00 0"});
  CHECK(SecondDay({SimRecord(kSleep, 1, 12), SimRecord(kSleep, 1, 14), SimRecord(kUse, 1, 19)}) ==
        Texts{"1 12:00 2", "1 12:10 5", "1 13:00 6", "1 19:00 0"});
}

TEST_CASE("events before the first use are not simulated") {
  NativeSimulatorConfigurations parameters = Daily();
  Simulator simulator(parameters);
  simulator.Run(History{SimRecord(kSleep, 0, 8), SimRecord(kLimbo, 0, 9), SimRecord(kUse, 0, 10)});
  // The sleep is not in the time line, the limbo that ends it is.
  CHECK(SimTexts(simulator.TimeLine()) == Texts{"0 09:00 1", "0 10:00 0"});
  CHECK(simulator.Historian().Entries().size() == 2);
}

TEST_CASE(
    "the predictor learns of use, of every kind of sleep as sleep, and of limbo as shut-down") {
  NativeSimulatorConfigurations parameters = Daily();
  Simulator simulator(parameters);
  simulator.Run(AfterFirstDay({SimRecord(kSleep, 1, 12), SimRecord(kUse, 1, 15),
                               SimRecord(kLimbo, 1, 16), SimRecord(kUse, 1, 17),
                               SimRecord(kHibernation, 1, 18), SimRecord(kUse, 1, 18, 5)}));
  const std::vector<TimeLineEvent>& entries = simulator.Historian().Entries();
  const std::vector<int32_t> states = {Activating, Suspend, Activating, Suspend,    Activating,
                                       Suspend,    Suspend, Suspend,    Activating, ShuttingDown,
                                       Activating, Suspend, Activating};
  REQUIRE(entries.size() == states.size());
  for (size_t i = 0; i < states.size(); ++i) CHECK(entries[i].state == states[i]);
  CHECK(entries[6].time == tm{0, 10, 12, 2, 0, 126, 5, 1, 0});
}

TEST_CASE("a recorded hibernation out of use schedules too, but is not hibernated again") {
  CHECK(SecondDay({SimRecord(kHibernation, 1, 12), SimRecord(kUse, 1, 15)}) ==
        Texts{"1 12:00 3", "1 15:00 0"});
}

TEST_CASE("a recorded hibernation during sleep is ignored when one is predicted") {
  CHECK(SecondDay({SimRecord(kSleep, 1, 12), SimRecord(kHibernation, 1, 12, 5),
                   SimRecord(kUse, 1, 15)}) ==
        Texts{"1 12:00 2", "1 12:10 5", "1 13:00 6", "1 15:00 0"});
  // Here the recorded hibernation comes after the predicted one.
  CHECK(SecondDay({SimRecord(kSleep, 1, 12), SimRecord(kHibernation, 1, 12, 20),
                   SimRecord(kUse, 1, 15)}) ==
        Texts{"1 12:00 2", "1 12:10 5", "1 13:00 6", "1 15:00 0"});
}

TEST_CASE("a predicted hibernation comes behind a recorded one of the same second") {
  CHECK(SecondDay({SimRecord(kSleep, 1, 12), SimRecord(kHibernation, 1, 12, 10),
                   SimRecord(kUse, 1, 15)}) ==
        Texts{"1 12:00 2", "1 12:10 5", "1 13:00 6", "1 15:00 0"});
}

TEST_CASE("no wake-back is scheduled for the second of the sleep itself") {
  HistoryRecord hibernation = SimRecord(kHibernation, 1, 11);
  hibernation.time += 0.5;
  CHECK(SecondDay({SimRecord(kSleep, 1, 11), hibernation, SimRecord(kUse, 1, 12, 5)}) ==
        Texts{"1 11:00 2", "1 11:00 3", "1 12:05 0"});
}

TEST_CASE("a recorded hibernation during sleep counts when none is predicted") {
  CHECK(SecondDay({SimRecord(kSleep, 1, 11), SimRecord(kHibernation, 1, 11, 30),
                   SimRecord(kUse, 1, 12, 5)}) == Texts{"1 11:00 2", "1 11:30 3", "1 12:05 0"});
}

TEST_CASE("limbo cancels what is scheduled and ends like sleep") {
  CHECK(SecondDay({SimRecord(kLimbo, 1, 12), SimRecord(kUse, 1, 15)}) ==
        Texts{"1 12:00 1", "1 15:00 0"});
  CHECK(SecondDay({SimRecord(kSleep, 1, 12), SimRecord(kLimbo, 1, 12, 30), SimRecord(kSleep, 1, 14),
                   SimRecord(kUse, 1, 15)}) ==
        Texts{"1 12:00 2", "1 12:10 5", "1 12:30 1", "1 15:00 0"});
}

TEST_CASE("a stop request cuts the time line short") {
  NativeSimulatorConfigurations parameters = Daily();
  OptimizerStopRequested = true;
  CHECK(SimulatePredictor(parameters, FirstDay()).empty());
  OptimizerStopRequested = false;
  CHECK(SimulatePredictor(parameters, FirstDay()).size() == 5);
}

}  // namespace dozewell
