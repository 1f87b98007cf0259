#include <windows.h>

#include <cstdlib>
#include <vector>

#include "support/parallel.h"

namespace dozewell {
namespace {

struct Run {
  void (*procedure)(int number);
  int number;
};

DWORD WINAPI Start(void* run) {
  const Run& it = *static_cast<const Run*>(run);
  it.procedure(it.number);
  return 0;
}

}  // namespace

void RunInParallel(int count, void (*procedure)(int number)) {
  std::vector<Run> runs;
  runs.reserve(static_cast<size_t>(count));
  for (int number = 0; number < count; ++number) runs.push_back({procedure, number});
  std::vector<HANDLE> threads;
  threads.reserve(runs.size());
  for (Run& run : runs) threads.push_back(CreateThread(nullptr, 0, Start, &run, 0, nullptr));
  for (const HANDLE thread : threads) {
    if (WaitForSingleObject(thread, INFINITE) != WAIT_OBJECT_0) std::abort();
    CloseHandle(thread);
  }
}

}  // namespace dozewell
