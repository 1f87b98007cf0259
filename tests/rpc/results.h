#ifndef DOZEWELL_TESTS_RPC_RESULTS_H_
#define DOZEWELL_TESTS_RPC_RESULTS_H_

#include <cstdint>
#include <functional>
#include <string>

namespace dozewell {

// Limits only end what hangs: this is some ten thousand times as long as any answer takes, so that
// no load of the machine comes near it.
constexpr uint32_t kHangMs = 600000;

// Counts tests and prints a line for each.
class Results {
 public:
  // A test passes when it returns; what it throws is printed as the reason for its failure.
  void Run(const std::string& name, const std::function<void()>& test);

  // Prints the line with the counts and returns the program's exit code.
  int Finish() const;

 private:
  int passed_ = 0;
  int failed_ = 0;
};

// Throws std::runtime_error with the text unless the condition holds.
void Expect(bool condition, const std::string& text);

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_RPC_RESULTS_H_
