#ifndef DOZEWELL_TESTS_FAKES_CALL_FAILER_H_
#define DOZEWELL_TESTS_FAKES_CALL_FAILER_H_

namespace dozewell::fakes {

// Counts the calls of a fake and fails some in a row, so that a test can fail each call of a
// scenario in turn.
struct CallFailer {
  int firstFailing = 0;  // 1 is the first call; 0 fails none
  int failures = 1;
  int calls = 0;  // so far

  bool Fails() {
    ++calls;
    return firstFailing != 0 && calls >= firstFailing && calls < firstFailing + failures;
  }
};

}  // namespace dozewell::fakes

#endif  // DOZEWELL_TESTS_FAKES_CALL_FAILER_H_
