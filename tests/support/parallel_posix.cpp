#include <thread>
#include <vector>

#include "support/parallel.h"

namespace dozewell {

void RunInParallel(int count, void (*procedure)(int number)) {
  std::vector<std::thread> threads;
  threads.reserve(static_cast<size_t>(count));
  for (int number = 0; number < count; ++number) threads.emplace_back(procedure, number);
  for (std::thread& thread : threads) thread.join();
}

}  // namespace dozewell
