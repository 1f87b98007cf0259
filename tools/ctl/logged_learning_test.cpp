#include "ctl/logged_learning.h"

#include <doctest/doctest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "support/local_times.h"

namespace dozewell::ctl {
namespace {

constexpr int64_t kStart = 1000;

// Events of which the first was logged when the service started, and the others each a second
// later.
std::vector<ServiceEvent> Events(const std::vector<std::string>& texts, int64_t first = kStart) {
  std::vector<ServiceEvent> events;
  events.reserve(texts.size());
  for (const std::string& text : texts) events.push_back({first++, 4, text});
  return events;
}

// "8 in use, 18 asleep" for events of 2026-11-21; "not known" for none.
std::string Learnt(const std::vector<std::string>& texts, std::optional<int32_t> savedHour = {},
                   int64_t first = kStart) {
  std::optional<tm> saved;
  if (savedHour) saved = LocalTime(2026, 11, 21, *savedHour);
  const auto after = ReadLearning(Events(texts, first), kStart).After(saved);
  if (!after) return "not known";
  std::string text;
  for (const TimeLineEvent& event : *after) {
    constexpr const char* kNames[] = {"in use", "asleep", "off"};
    text +=
        (text.empty() ? "" : ", ") + std::to_string(event.time.tm_hour) + " " + kNames[event.state];
  }
  return text;
}

std::string At(int32_t hour, const char* name) {
  return "21/11/2026 " + std::to_string(hour) + ":0:0 - " + name;
}

using Texts = std::vector<std::string>;

Texts operator+(Texts first, const Texts& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

const Texts kStarted = {At(8, "Activating"), "Active"};
const Texts kSlept = {At(12, "Suspend"), "Predicted Hibernate at: no prediction", "Suspended"};
const Texts kWoke = {At(13, "Activating"), "GetPreviousSleepStatus 0", "Active"};

}  // namespace

TEST_CASE("starts, sleeps and wakes in the log are what was learnt") {
  CHECK(Learnt(kStarted) == "8 in use");
  CHECK(Learnt(kStarted + kSlept + kWoke) == "8 in use, 12 asleep, 13 in use");
  CHECK(Learnt(kStarted + Texts{At(18, "ShuttingDown"), "Off"}) == "8 in use, 18 off");
}

TEST_CASE("what was saved is not learnt again") {
  CHECK(Learnt(kStarted + kSlept + kWoke, 8) == "12 asleep, 13 in use");
  CHECK(Learnt(kStarted + kSlept + kWoke, 12) == "13 in use");
  CHECK(Learnt(kStarted + kSlept + kWoke, 13).empty());
}

TEST_CASE("the service's own wakes, and what it did not do, are not learnt") {
  CHECK(Learnt(kStarted + kSlept +
               Texts{At(14, "Activating"), "Spike_S4ToS3", At(15, "Suspend"), "Suspended",
                     At(16, "Activating"), "Spike_S3ToS4", At(17, "Activating"), "Active"}) ==
        "8 in use, 12 asleep, 17 in use");
  CHECK(Learnt(kStarted +
               Texts{At(9, "Activating"), "State Machine Error: State: Active, Undefined event: " +
                                              At(9, "Activating")} +
               kSlept) == "8 in use, 12 asleep");
  CHECK(Learnt(kStarted + Texts{At(9, "Saving"), At(10, "ParamChanging"), At(11, "Uninitializing"),
                                "Uninitialized"}) == "8 in use");
}

TEST_CASE("what an earlier process had not saved is lost") {
  CHECK(Learnt(kStarted + kSlept + Texts{At(20, "Activating"), "Active"}, 8, kStart - 5) ==
        "20 in use");
}

TEST_CASE("what a controller that was switched off had not saved is lost") {
  CHECK(Learnt(kStarted + kSlept + kWoke + Texts{At(20, "Activating"), "Active"}) == "20 in use");
}

TEST_CASE("a reset forgets all, and makes what comes after it all there is") {
  const Texts reset = {At(14, "ResetHistory"), At(15, "Suspend"), "Suspended"};
  CHECK(Learnt(kStarted + reset) == "15 asleep");
  CHECK(Learnt(kWoke + reset, {}, kStart + 5000) == "15 asleep");
}

TEST_CASE("a log that does not go back far enough tells nothing") {
  CHECK(Learnt({}) == "not known");
  CHECK(Learnt(kSlept + kWoke, 11, kStart + 61) == "not known");
  CHECK(Learnt(kSlept + kWoke, {}, kStart + 61) == "not known");
  CHECK(Learnt(kSlept + kWoke, 12, kStart + 61) == "13 in use");
  CHECK(Learnt(kSlept + kWoke, 11, kStart + 60) == "12 asleep, 13 in use");
}

TEST_CASE("other texts are no events of the controller") {
  for (const char* const text :
       {"21/11/2026 8:0 - Suspend", "32/11/2026 8:0:0 Suspend", "21/11/2026 8:0:0 -Suspend",
        "x/11/2026 8:0:0 - Suspend", "Suspend", ""}) {
    CAPTURE(text);
    CHECK(Learnt(kStarted + Texts{text, "Suspended"}) == "8 in use");
  }
}

}  // namespace dozewell::ctl
