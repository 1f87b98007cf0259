#include <windows.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "base/system_handle.h"
#include "common/tool_error.h"
#include "fleet/crew.h"

namespace dozewell::fleet {
namespace {

DWORD WINAPI Start(void* work) {
  (*static_cast<const std::function<void()>*>(work))();
  return 0;
}

}  // namespace

int ProcessorCount() {
  return std::max(1, static_cast<int>(GetActiveProcessorCount(ALL_PROCESSOR_GROUPS)));
}

void RunBeside(int count, const std::function<void()>& work, const std::function<void()>& here) {
  std::function<void()> shared = work;
  std::vector<SystemHandle> threads;
  for (int i = 0; i < count; ++i) {
    const HANDLE thread = CreateThread(nullptr, 0, Start, &shared, 0, nullptr);
    if (thread == nullptr) break;
    threads.emplace_back(thread);
  }
  if (threads.empty()) throw ToolError("no thread can be started");
  here();
  for (const SystemHandle& thread : threads) WaitForSingleObject(thread.get(), INFINITE);
}

void Pause() { Sleep(1); }

}  // namespace dozewell::fleet
