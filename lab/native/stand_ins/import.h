#ifndef DOZEWELL_LAB_STAND_INS_IMPORT_H_
#define DOZEWELL_LAB_STAND_INS_IMPORT_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "shared/system_calls.h"

namespace dozewell::lab {

// Counts a call, given by its place in the list of system calls. Returns the error that it is to
// fail with, which is recorded, or 0.
uint32_t CountCall(size_t place);

// A function that the program imports and that a function of the lab stands in for. Objects with
// static storage put themselves on the list that ReplaceAll goes through.
class ImportedFunction {
 public:
  ImportedFunction(size_t place, void* standIn);
  ImportedFunction(const ImportedFunction&) = delete;

  // The error that this call is to fail with, or 0.
  [[nodiscard]] uint32_t CountCall() const { return lab::CountCall(place_); }

  // Puts every stand-in into the import table of a program, before it runs.
  static void ReplaceAll(void* program);

  // The stand-in for a function that the program looked up itself, or null when it has none.
  static void* StandInFor(std::string_view name, void* system);

 protected:
  void* system_ = nullptr;

 private:
  static ImportedFunction* Find(std::string_view name);

  static ImportedFunction* First_;

  size_t place_;
  void* standIn_;
  ImportedFunction* next_;
};

template <typename Function>
class Import : public ImportedFunction {
 public:
  Import(size_t place, Function* standIn)
      : ImportedFunction(place, reinterpret_cast<void*>(standIn)) {}

  // The system's own function.
  template <typename... Arguments>
  auto System(Arguments... arguments) const {
    return reinterpret_cast<Function*>(system_)(arguments...);
  }
};

}  // namespace dozewell::lab

#endif  // DOZEWELL_LAB_STAND_INS_IMPORT_H_
