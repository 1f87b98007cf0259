#include "fakes/driver_fake.h"

#include <cstdio>
#include <cstring>

#include "fakes/journal.h"
#include "power/device_io.h"
#include "power/driver_device.h"

namespace dozewell {
namespace fakes {

Driver driver;

void ResetDriver() {
  CloseDriverDevice();
  driver = {};
}

namespace {

void NoteDriverCall(const std::string& call) {
  driver.calls.push_back(call);
  journal.push_back("driver: " + call);
}

std::string Hex(uint32_t number) {
  char text[9];
  std::snprintf(text, sizeof(text), "%08x", number);
  return text;
}

enum class Control { kUnknown, kWriteTimer, kReadTimer, kReadPreviousSleepStatus };

Control ControlOf(uint32_t code, size_t inputSize, size_t outputSize) {
  if (code == 0x9C402404 && inputSize == 8 && outputSize == 0) return Control::kWriteTimer;
  if (code == 0x9C402408 && inputSize == 0 && outputSize == 8) return Control::kReadTimer;
  if (code == 0x9C402410 && inputSize == 0 && outputSize == 4) {
    return Control::kReadPreviousSleepStatus;
  }
  return Control::kUnknown;
}

}  // namespace
}  // namespace fakes

using fakes::driver;

void* OpenDevice() {
  fakes::NoteDriverCall("open");
  return driver.present ? &driver : kInvalidDevice;
}

bool PerformIoControl(void* device, uint32_t code, const void* input, size_t inputSize,
                      void* output, size_t outputSize) {
  const fakes::Control control = fakes::ControlOf(code, inputSize, outputSize);
  TimerRecord written;
  std::string call;
  switch (control) {
    case fakes::Control::kWriteTimer:
      std::memcpy(&written, input, sizeof(written));
      call = "write timer " + fakes::Hex(written.words[0]) + " " + fakes::Hex(written.words[1]);
      break;
    case fakes::Control::kReadTimer:
      call = "read timer";
      break;
    case fakes::Control::kReadPreviousSleepStatus:
      call = "read previous sleep status";
      break;
    case fakes::Control::kUnknown:
      call = "control " + fakes::Hex(code) + " " + std::to_string(inputSize) + " " +
             std::to_string(outputSize);
      break;
  }
  fakes::NoteDriverCall(device == &driver ? call : call + " on no device");
  if (driver.failer.Fails() || device != &driver) return false;
  switch (control) {
    case fakes::Control::kWriteTimer:
      driver.timer = written;
      return true;
    case fakes::Control::kReadTimer:
      std::memcpy(output, &driver.timer, sizeof(driver.timer));
      return true;
    case fakes::Control::kReadPreviousSleepStatus:
      std::memcpy(output, &driver.previousSleepStatus, sizeof(driver.previousSleepStatus));
      return true;
    default:
      return false;
  }
}

void CloseDevice(void* device) {
  fakes::NoteDriverCall(device == &driver ? "close" : "close on no device");
}

}  // namespace dozewell
