#ifndef DOZEWELL_LAB_STAND_INS_FAILING_IMPORT_H_
#define DOZEWELL_LAB_STAND_INS_FAILING_IMPORT_H_

#include "stand_ins/import.h"

namespace dozewell::lab {

// Sets the calling thread's error code.
void SetError(uint32_t error);

// What a function returns when it fails: the error itself where it returns errors, else zero or
// null with the thread's error set.
template <typename Result>
Result FailureOf(uint32_t error) {
  if constexpr (std::is_same_v<Result, long> || std::is_same_v<Result, unsigned long>) {
    return static_cast<Result>(error);
  } else {
    SetError(error);
    return Result{};
  }
}

// A function that the lab only counts and makes fail. Instantiating it explicitly puts it before
// the system's.
template <size_t place, typename Function>
class FailingImport;

template <size_t place, typename Result, typename... Arguments>
class FailingImport<place, Result(Arguments...)> {
  static Result Call(Arguments... arguments) {
    if (const uint32_t error = import_.CountCall()) return FailureOf<Result>(error);
    return import_.System(arguments...);
  }

  static inline Import<Result(Arguments...)> import_{place, Call};
};

}  // namespace dozewell::lab

#endif  // DOZEWELL_LAB_STAND_INS_FAILING_IMPORT_H_
