// How long a suspend takes on a quiet machine, and while the optimizer's thread saves and searches
// a history that is slow to open, others save it, and a thousand clients call all the while:
// resets, changes of the strength, starts and stops of the controller among them. Argument: the
// seconds that opening the history takes, 3 by default.

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <string_view>
#include <thread>
#include <vector>

#include "base/numbers.h"
#include "base/process_flags.h"
#include "controller/controller.h"
#include "power/open_driver_device.h"
#include "prediction/history_recorder.h"
#include "rpc/procedures.h"
#include "service/control_handler.h"
#include "stress/quiet_machine.h"
#include "support/temp_folder.h"

namespace {

std::atomic<int> secondsToOpen{3};
std::atomic<bool> slow{false};

}  // namespace

// The linker redirects every fopen to here.
// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming): the linker's names.
extern "C" {
FILE* __real_fopen(const char* path, const char* mode);
FILE* __wrap_fopen(const char* path, const char* mode) {
  if (slow && std::string_view(path).ends_with("zs7state.dat")) {
    std::this_thread::sleep_for(std::chrono::seconds(secondsToOpen));
  }
  return __real_fopen(path, mode);
}
}
// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming)

namespace dozewell {
namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int kClients = 1000;
constexpr auto kBetweenCalls = std::chrono::milliseconds(100);
constexpr int kSuspends = 500;

std::atomic<bool> busy{true};
std::atomic<int> calls{0};
std::atomic<int> saves{0};

void Call(int client) {
  for (int call = client; busy; ++call) {
    int32_t strength = 0;
    if (call % 50 == 0) {
      ResetHistory();
    } else if (call % 50 < 5) {
      SetStrength(call);
    } else if (client == 1 && call % 50 == 5) {
      // One client alone, so that most suspends find a controller.
      SetFeatureEnabled(false);
      SetFeatureEnabled(true);
    } else {
      GetStrength(&strength);
    }
    ++calls;
    std::this_thread::sleep_for(kBetweenCalls);
  }
}

void Save() {
  while (busy) {
    AH_SaveHistory();
    ++saves;
    // Otherwise hardly anybody else would get the history's lock.
    std::this_thread::sleep_for(kBetweenCalls);
  }
}

void Send(uint32_t event) { ServiceCtrlHandler(kControlPowerEvent, event, nullptr); }

// Suspends with some time between them; a resume and a change of the power status follow each.
std::vector<double> MeasureSuspends() {
  std::vector<double> taken;
  for (int i = 0; i < kSuspends; ++i) {
    // A controller that a client has stopped would make it short.
    while (!ControllerStarted) std::this_thread::yield();
    const Clock::time_point start = Clock::now();
    Send(kPowerSuspend);
    taken.push_back(Milliseconds(Clock::now() - start).count());
    Send(kPowerResumeAutomatic);
    Send(kPowerStatusChange);
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  std::sort(taken.begin(), taken.end());
  return taken;
}

void Print(const char* name, const std::vector<double>& taken) {
  std::printf("%-6s %zu suspends: median %.3f ms, longest %.3f ms\n", name, taken.size(),
              taken[taken.size() / 2], taken.back());
  std::fflush(stdout);
}

void Run() {
  const TempFolder folder;
  quiet::dataFolder = folder.Path() + L"\\";
  FeatureEnabled = true;
  OpenDriverDevice();
  StartController();
  const std::vector<double> alone = MeasureSuspends();
  Print("quiet", alone);

  slow = true;
  std::vector<std::thread> others;
  others.reserve(kClients + 1);
  others.emplace_back(Save);
  for (int client = 0; client < kClients; ++client) others.emplace_back(Call, client);
  const int searches = quiet::messages.searches;
  const std::vector<double> among = MeasureSuspends();
  Print("busy", among);
  std::printf("ratio  median %.1f, longest %.1f; meanwhile %d calls, %d saves, %d searches\n",
              among[among.size() / 2] / alone[alone.size() / 2], among.back() / alone.back(),
              calls.load(), saves.load(), quiet::messages.searches - searches);
  busy = false;
  slow = false;
  for (std::thread& other : others) other.join();
  std::fflush(stdout);
  // The optimizer's thread may still be at work.
  std::_Exit(0);
}

}  // namespace
}  // namespace dozewell

int main(int argc, char** argv) {
  if (argc > 1) secondsToOpen = dozewell::Atoi(argv[1]);
  dozewell::Run();
}
