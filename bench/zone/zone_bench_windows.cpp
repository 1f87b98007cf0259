// What it costs a suspend that every local time is converted in the zone that the system has at
// that moment: suspends on a quiet machine, whose other leaves cost nothing, with such conversions
// and without, by turns.

#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <vector>

#include "base/clock.h"
#include "base/process_flags.h"
#include "base/system_zone.h"
#include "controller/controller.h"
#include "power/open_driver_device.h"
#include "service/control_handler.h"
#include "stress/quiet_machine.h"
#include "support/temp_folder.h"

namespace dozewell {
namespace {

constexpr int kSuspends = 2000;

int64_t now = 1795219200;  // 2026-11-21 00:00
bool readsZone = false;
int conversions = 0;

}  // namespace

int64_t UtcSecondsNow() { return now += quiet::kClockStep; }

// The times of the quiet machine, after a conversion that changes nothing.
bool LocalTimeNow(tm& time) {
  const int64_t seconds = UtcSecondsNow();
  if (readsZone) {
    ++conversions;
    LocalTimeInSystemZone(seconds, time);
  }
  return TmFromSeconds(seconds, time);
}

namespace {

double Microseconds(int64_t ticks) {
  LARGE_INTEGER frequency;
  QueryPerformanceFrequency(&frequency);
  return static_cast<double>(ticks) * 1e6 / static_cast<double>(frequency.QuadPart);
}

int64_t Ticks() {
  LARGE_INTEGER ticks;
  QueryPerformanceCounter(&ticks);
  return ticks.QuadPart;
}

void Send(uint32_t event) { ServiceCtrlHandler(kControlPowerEvent, event, nullptr); }

double TakeSuspend() {
  const int64_t start = Ticks();
  Send(kPowerSuspend);
  const int64_t end = Ticks();
  readsZone = false;
  Send(kPowerResumeAutomatic);
  return Microseconds(end - start);
}

double Median(std::vector<double>& times) {
  const auto middle = times.begin() + static_cast<ptrdiff_t>(times.size() / 2);
  std::ranges::nth_element(times, middle);
  return *middle;
}

void Measure() {
  const TempFolder folder;
  quiet::dataFolder = folder.Path() + L"\\";
  FeatureEnabled = true;
  OpenDriverDevice();
  StartController();
  std::vector<double> without;
  std::vector<double> with;
  for (int i = 0; i < kSuspends; ++i) {
    without.push_back(TakeSuspend());
    readsZone = true;
    with.push_back(TakeSuspend());
  }
  const double plain = Median(without);
  const double converting = Median(with);
  std::printf(
      "median of %d suspends: %.1f us, and %.1f us with %.1f conversions in the system's zone "
      "each, "
      "ratio %.2f; %.5f of the two seconds that a suspend has\n",
      kSuspends, plain, converting, static_cast<double>(conversions) / kSuspends,
      converting / plain, (converting - plain) / 2e6);
  std::fflush(stdout);
  // The optimizer's thread may still be at work.
  std::_Exit(0);
}

}  // namespace
}  // namespace dozewell

int main() { dozewell::Measure(); }
