#ifndef DOZEWELL_BASE_THREAD_H_
#define DOZEWELL_BASE_THREAD_H_

namespace dozewell {

// Runs the procedure, which must not throw, on a new thread that nobody can wait for. False when
// there is no thread to be had. Any thread.
bool StartThread(void (*procedure)());

}  // namespace dozewell

#endif  // DOZEWELL_BASE_THREAD_H_
