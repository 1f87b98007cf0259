#include "rpc/results.h"

#include <cstdio>
#include <exception>
#include <stdexcept>

namespace dozewell {

void Results::Run(const std::string& name, const std::function<void()>& test) {
  try {
    test();
    ++passed_;
    std::printf("passed: %s\n", name.c_str());
  } catch (const std::exception& error) {
    ++failed_;
    std::printf("FAILED: %s: %s\n", name.c_str(), error.what());
  }
  std::fflush(stdout);
}

int Results::Finish() const {
  std::printf("%d passed, %d failed\n", passed_, failed_);
  return failed_ == 0 ? 0 : 1;
}

void Expect(bool condition, const std::string& text) {
  if (!condition) throw std::runtime_error(text);
}

}  // namespace dozewell
