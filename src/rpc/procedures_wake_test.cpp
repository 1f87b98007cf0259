// Reading and arming the driver's wake timers.

#include <doctest/doctest.h>

#include <cstdint>
#include <functional>
#include <string>

#include "fakes/driver_fake.h"
#include "fakes/served_machine.h"
#include "power/driver_device.h"
#include "rpc/procedures.h"

namespace dozewell {
namespace {

using fakes::Answer;
using fakes::Ask;
using fakes::kHighest;
using fakes::kLowest;
using fakes::kRefusedUnasked;
using fakes::kTimerRead;
using fakes::ServedMachine;
using fakes::SetTimer;

constexpr WakeTime kUntouchedTime = {91, 92, 93, 94, 95};

}  // namespace

TEST_CASE("the driver is enabled when either timer is") {
  struct Row {
    uint32_t alarm;
    uint32_t duration;
    bool enabled;
  };
  const Row rows[] = {
      {0, 0, false},
      {0x80000000, 0, true},
      {0, 0x80000000, true},
      {0x80000001, 0xC8000005, true},
      {0x7FFFFFFF, 0x7FFFFFFF, false},
  };
  for (const Row& row : rows) {
    const ServedMachine machine;
    SetTimer(row.alarm, row.duration);
    bool enabled = !row.enabled;
    CHECK(Ask([&] { return GetDriverEnabled(&enabled); }) == Answer{true, kTimerRead});
    CHECK(enabled == row.enabled);
  }
}

TEST_CASE("whether the driver is enabled is unknown without its device or when it cannot be read") {
  bool enabled = true;
  {
    const fakes::Machine machine;
    CHECK(Ask([&] { return GetDriverEnabled(&enabled); }) ==
          Answer{false, {"driver: read timer on no device"}});
  }
  const ServedMachine machine;
  fakes::driver.failer.firstFailing = 1;
  CHECK(Ask([&] { return GetDriverEnabled(&enabled); }) == Answer{false, kTimerRead});
  CHECK(enabled);
}

TEST_CASE("a wake time is packed by its fields' widths and arms the timer's word") {
  struct Row {
    WakeTime time;
    const char* packed;  // with the enable bit
  };
  const Row rows[] = {
      {{0, 0, 0, 0, 0}, "80000000"},
      {{1, 0, 0, 0, 0}, "80000001"},
      {{0, 1, 0, 0, 0}, "80000040"},
      {{0, 0, 1, 0, 0}, "80000800"},
      {{0, 0, 0, 1, 0}, "80010000"},
      {{0, 0, 0, 0, 1}, "80100000"},
      {{30, 6, 21, 11, 26}, "81aba99e"},
      {{63, 31, 31, 15, 127}, "87ffffff"},
      // Bits that are too many for a field are cut off and reach no other field.
      {{64, 32, 32, 16, 128}, "80000000"},
      {{65, 33, 33, 17, 129}, "80110841"},
      {{-1, 0, 0, 0, 0}, "8000003f"},
      {{0, -1, 0, 0, 0}, "800007c0"},
      {{0, 0, -1, 0, 0}, "8000f800"},
      {{0, 0, 0, -1, 0}, "800f0000"},
      {{0, 0, 0, 0, -1}, "87f00000"},
      {{kLowest, kHighest, kLowest, kHighest, kLowest}, "800f07c0"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.packed);
    const ServedMachine machine;
    CHECK(Ask([&] { return SetWakeTime(0, &row.time); }) ==
          Answer{true,
                 {"driver: read timer",
                  std::string("driver: write timer ") + row.packed + " 00000000"}});
    SetTimer(0, 0);
    CHECK(
        Ask([&] { return SetWakeTime(1, &row.time); }) ==
        Answer{true,
               {"driver: read timer", std::string("driver: write timer 00000000 ") + row.packed}});
  }
}

TEST_CASE("a count arms a timer in the relative form with its low 20 bits") {
  struct Row {
    int32_t count;
    const char* word;
  };
  const Row rows[] = {
      {0, "88000000"},        {1, "88000001"},  {0xFFFFF, "880fffff"}, {0x100000, "88000000"},
      {0x123456, "88023456"}, {-1, "880fffff"}, {kLowest, "88000000"}, {kHighest, "880fffff"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.word);
    const ServedMachine machine;
    CHECK(Ask([&] { return SetWakeRaw(0, row.count); }) ==
          Answer{true,
                 {"driver: read timer",
                  std::string("driver: write timer ") + row.word + " 00000000"}});
    SetTimer(0, 0);
    CHECK(Ask([&] { return SetWakeRaw(1, row.count); }) ==
          Answer{true,
                 {"driver: read timer", std::string("driver: write timer 00000000 ") + row.word}});
  }
}

TEST_CASE("arming keeps the driver's own bits and the other timer") {
  const ServedMachine machine;
  const WakeTime time = {1, 0, 0, 0, 0};
  SetTimer(0x7FFFFFFF, 0x12345678);
  SetWakeTime(0, &time);
  CHECK(fakes::driver.timer == TimerRecord{{0xF0000001, 0x12345678}});
  SetWakeRaw(1, 2);
  CHECK(fakes::driver.timer == TimerRecord{{0xF0000001, 0x98000002}});
}

TEST_CASE("arming fails without the device, and when the timer cannot be read or written") {
  const WakeTime time = {1, 0, 0, 0, 0};
  const std::function<bool()> arms[] = {
      [&] { return SetWakeTime(0, &time); },
      [&] { return SetWakeTime(1, &time); },
      [] { return SetWakeRaw(0, 1); },
      [] { return SetWakeRaw(1, 1); },
  };
  for (const std::function<bool()>& arm : arms) {
    {
      const fakes::Machine machine;
      CHECK(Ask(arm) == Answer{false, {"driver: read timer on no device"}});
    }
    const ServedMachine machine;
    fakes::driver.failer = {.firstFailing = 1};
    CHECK(Ask(arm) == Answer{false, kTimerRead});
    fakes::driver.failer = {.firstFailing = 2};
    CHECK_FALSE(Ask(arm).answer);
    CHECK(fakes::driver.timer == TimerRecord{});
  }
}

TEST_CASE("a third timer is refused by all without a driver control") {
  const ServedMachine machine;
  const auto checkRefused = [](uint32_t timer) {
    CAPTURE(timer);
    const WakeTime time = {30, 6, 21, 11, 26};
    WakeTime readTime = kUntouchedTime;
    int32_t count = 77;
    CHECK(Ask([&] { return SetWakeTime(timer, &time); }) == kRefusedUnasked);
    CHECK(Ask([&] { return SetWakeRaw(timer, 5); }) == kRefusedUnasked);
    CHECK(Ask([&] { return GetWakeTime(timer, &readTime); }) == kRefusedUnasked);
    CHECK(Ask([&] { return GetWakeRaw(timer, &count); }) == kRefusedUnasked);
    CHECK(readTime == kUntouchedTime);
    CHECK(count == 77);
  };
  checkRefused(2);
  checkRefused(3);
  checkRefused(fakes::kLargestEnum);
  for (const uint32_t timer : fakes::kBeyondEnums) checkRefused(timer);
}

TEST_CASE("a timer's word is unpacked into its five fields, flags left out") {
  struct Row {
    uint32_t word;
    WakeTime time;
  };
  const Row rows[] = {
      {0, {0, 0, 0, 0, 0}},
      {0x81ABA99E, {30, 6, 21, 11, 26}},
      {0xFFFFFFFF, {63, 31, 31, 15, 127}},
      {0xF8000000, {0, 0, 0, 0, 0}},
      {0x07FFFFFF, {63, 31, 31, 15, 127}},
      {0x00000041, {1, 1, 0, 0, 0}},
      {0x08012345, {5, 13, 4, 1, 0}},
  };
  for (const Row& row : rows) {
    CAPTURE(row.word);
    const ServedMachine machine;
    for (const uint32_t timer : {0U, 1U}) {
      SetTimer(timer == 0 ? row.word : ~row.word, timer == 1 ? row.word : ~row.word);
      WakeTime time = kUntouchedTime;
      CHECK(Ask([&] { return GetWakeTime(timer, &time); }) == Answer{true, kTimerRead});
      CHECK(time == row.time);
    }
  }
}

TEST_CASE("a timer's count is its low 20 bits in either form") {
  struct Row {
    uint32_t word;
    int32_t count;
  };
  const Row rows[] = {
      {0, 0}, {0x88023456, 0x23456}, {0xFFFFFFFF, 0xFFFFF}, {0xFFF00000, 0}, {0x81ABA99E, 0xBA99E},
  };
  for (const Row& row : rows) {
    CAPTURE(row.word);
    const ServedMachine machine;
    for (const uint32_t timer : {0U, 1U}) {
      SetTimer(timer == 0 ? row.word : ~row.word, timer == 1 ? row.word : ~row.word);
      int32_t count = 77;
      CHECK(Ask([&] { return GetWakeRaw(timer, &count); }) == Answer{true, kTimerRead});
      CHECK(count == row.count);
    }
  }
}

TEST_CASE("every time that fits comes back as it was set") {
  const ServedMachine machine;
  for (int32_t value = 0; value < 128; ++value) {
    const WakeTime time = {value & 63, value & 31, value * 7 & 31, value & 15, value};
    WakeTime back = kUntouchedTime;
    for (const uint32_t timer : {0U, 1U}) {
      CHECK(SetWakeTime(timer, &time));
      CHECK(GetWakeTime(timer, &back));
      CHECK(back == time);
    }
  }
}

TEST_CASE("a timer that cannot be read leaves the output alone") {
  const ServedMachine machine;
  WakeTime time = kUntouchedTime;
  int32_t count = 77;
  for (const uint32_t timer : {0U, 1U}) {
    fakes::driver.failer = {.firstFailing = 1, .failures = 2};
    CHECK(Ask([&] { return GetWakeTime(timer, &time); }) == Answer{false, kTimerRead});
    CHECK(Ask([&] { return GetWakeRaw(timer, &count); }) == Answer{false, kTimerRead});
  }
  CloseDriverDevice();
  const Answer refused = {false, {"driver: read timer on no device"}};
  CHECK(Ask([&] { return GetWakeTime(0, &time); }) == refused);
  CHECK(Ask([&] { return GetWakeRaw(1, &count); }) == refused);
  CHECK(time == kUntouchedTime);
  CHECK(count == 77);
}

}  // namespace dozewell
