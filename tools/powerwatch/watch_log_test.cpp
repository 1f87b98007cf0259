#include "powerwatch/watch_log.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "common/powerwatch_format.h"

namespace dozewell::powerwatch {
namespace {

// A file of some size, which can be full.
struct Disk {
  std::vector<std::string> texts;
  uint32_t error = kNoError;

  WatchLog Open(uint64_t size) {
    return WatchLog(size, [this](const std::string& text) {
      if (error == kNoError) texts.push_back(text);
      return error;
    });
  }
};

const Reading kReading = {0, 0, 7, {}, {}, {}, {}};
const std::string kTimes = ",,1970-01-01T00:00:00.000,1970-01-01T00:00:00.000Z,7,,,,\r\n";

}  // namespace

TEST_CASE("a new file begins with the names of the columns, one that is there with an empty line") {
  Disk disk;
  CHECK(disk.Open(0).Begin(kReading) == kNoError);
  CHECK(disk.Open(1).Begin(kReading) == kNoError);
  CHECK(disk.texts == std::vector<std::string>{
                          std::string(kPowerwatchHeader) + "\r\n0,0" + kTimes,
                          "\r\n0,0" + kTimes,
                      });
}

TEST_CASE("each control is written by itself") {
  Disk disk;
  WatchLog log = disk.Open(1);
  CHECK(log.Add({13, 4}, kReading) == kNoError);
  CHECK(log.Add({13, 18}, kReading) == kNoError);
  CHECK(disk.texts == std::vector<std::string>{"13,4" + kTimes, "13,18" + kTimes});
}

TEST_CASE("a file of 50 MB takes no line more, and a watch that is full stays so") {
  Disk disk;
  const uint64_t line = ("13,18" + kTimes).size();
  CHECK(kMostBytes == 50'000'000);
  WatchLog fits = disk.Open(kMostBytes - line);
  CHECK(fits.Add({13, 18}, kReading) == kNoError);
  CHECK(fits.Add({1}, kReading) == kErrorFileTooLarge);
  CHECK(disk.texts.size() == 1);
  WatchLog full = disk.Open(kMostBytes - line + 1);
  CHECK(full.Add({13, 18}, kReading) == kErrorFileTooLarge);
  // A shorter one would fit.
  CHECK(full.Add({13, 4}, kReading) == kErrorFileTooLarge);
  CHECK(disk.texts.size() == 1);
}

TEST_CASE("after a line that could not be written no other is") {
  Disk disk;
  disk.error = 112;
  WatchLog log = disk.Open(1);
  CHECK(log.Add({13, 4}, kReading) == 112);
  disk.error = kNoError;
  CHECK(log.Add({13, 18}, kReading) == 112);
  CHECK(disk.texts.empty());
}

}  // namespace dozewell::powerwatch
