#ifndef DOZEWELL_TESTS_SUPPORT_PARALLEL_H_
#define DOZEWELL_TESTS_SUPPORT_PARALLEL_H_

namespace dozewell {

// Runs the procedure on `count` threads at once, each with its number from 0, and returns when all
// have ended.
void RunInParallel(int count, void (*procedure)(int number));

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_SUPPORT_PARALLEL_H_
