#ifndef DOZEWELL_TESTS_POWER_CUT_SYSTEM_STEPS_H_
#define DOZEWELL_TESTS_POWER_CUT_SYSTEM_STEPS_H_

#include <string>

namespace dozewell::power_cut {

// The calls by which the program works with files are counted, and one of them can end the process
// or fail.

enum class Trouble {
  None,
  End,        // the process ends where the call would be; half of what is written is written
  Fail,       // the call fails
  ReadsFail,  // from that call on, the medium does not give back what is read
};

// Counts from 0 from here on; the wanted call, from 1, meets the trouble.
void BeginSteps(Trouble trouble, int wanted);

// How many calls were made since, and no more trouble.
int EndSteps();

// Keeps a file from being replaced while this object lives, as another program's open handle does
// that lets others read and write.
class Holder {
 public:
  explicit Holder(const std::wstring& path);
  ~Holder();
  Holder(const Holder&) = delete;
  Holder& operator=(const Holder&) = delete;

 private:
  // Only on Windows, where an open handle keeps a file from being replaced.
  [[maybe_unused]] void* handle_ = nullptr;
};

// What a call has to do; the leaves ask this.
enum class Turn { Go, Fail, End };
Turn NextTurn(bool reads = false);
[[noreturn]] void EndProcess();

// Redirects the calls to here, where the linker does not do that.
void TakeCalls();

constexpr int kEnded = 9;  // the exit code of a process that was ended

}  // namespace dozewell::power_cut

#endif  // DOZEWELL_TESTS_POWER_CUT_SYSTEM_STEPS_H_
