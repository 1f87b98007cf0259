#ifndef DOZEWELL_TESTS_RPC_RESULTS_H_
#define DOZEWELL_TESTS_RPC_RESULTS_H_

#include <functional>
#include <string>

namespace dozewell {

// Counts tests and prints a line for each.
class Results {
 public:
  // A test has passed when it returns; what it throws is printed as the reason of its failure.
  void Run(const std::string& name, const std::function<void()>& test);

  // Prints the line that counts all and gives the program's exit code.
  int Finish() const;

 private:
  int passed_ = 0;
  int failed_ = 0;
};

// Throws std::runtime_error with the text unless the condition holds.
void Expect(bool condition, const std::string& text);

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_RPC_RESULTS_H_
