#ifndef DOZEWELL_COMMON_INTERRUPTS_H_
#define DOZEWELL_COMMON_INTERRUPTS_H_

namespace dozewell {

// While one of these exists, Ctrl+C and other requests to end the program wait; they take effect
// when the last one is gone. For what must not be left half done and takes a moment only. All of
// them belong to the main thread.
class HeldInterrupts {
 public:
  HeldInterrupts();
  ~HeldInterrupts();
  HeldInterrupts(const HeldInterrupts&) = delete;
  HeldInterrupts& operator=(const HeldInterrupts&) = delete;
};

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_INTERRUPTS_H_
