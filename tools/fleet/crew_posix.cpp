#include <sched.h>

#include <algorithm>
#include <chrono>
#include <system_error>
#include <thread>
#include <vector>

#include "common/tool_error.h"
#include "fleet/crew.h"

namespace dozewell::fleet {

int ProcessorCount() {
  cpu_set_t allowed;
  if (sched_getaffinity(0, sizeof(allowed), &allowed) == 0) return CPU_COUNT(&allowed);
  return std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
}

void RunBeside(int count, const std::function<void()>& work, const std::function<void()>& here) {
  std::vector<std::thread> threads;
  try {
    for (int i = 0; i < count; ++i) threads.emplace_back(work);
  } catch (const std::system_error& error) {
    if (threads.empty()) throw ToolError(std::string("no thread can be started: ") + error.what());
  }
  here();
  for (std::thread& thread : threads) thread.join();
}

void Pause() { std::this_thread::sleep_for(std::chrono::milliseconds(1)); }

}  // namespace dozewell::fleet
