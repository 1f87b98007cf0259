#ifndef DOZEWELL_TESTS_FAKES_MACHINE_H_
#define DOZEWELL_TESTS_FAKES_MACHINE_H_

#include <string>

#include "base/wall_clock.h"
#include "support/temp_folder.h"

namespace dozewell::fakes {

// A machine on which the service is installed and provisioned and has not run yet. For its lifetime
// all fakes and all process-wide state start as in a fresh process, at 8:05:09 on Saturday
// 2026-11-21. The user's hibernate-after timeouts are 30 minutes on AC and 15 on DC. The journal
// leaves out what the constructor does.
class Machine {
 public:
  Machine();
  ~Machine();
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;

  // The data folder, with a backslash at its end.
  std::wstring Folder() const { return folder_.Path() + L"\\"; }
  std::wstring DataFile() const { return folder_.File(L"cpredict.z7"); }
  std::wstring HistoryFile() const { return folder_.File(L"zs7state.dat"); }
  bool HasNoFiles() const { return folder_.IsEmpty(); }

 private:
  TempFolder folder_;
};

// Moves the clock; the machine's zone is UTC.
void SetTime(const tm& localTime);

}  // namespace dozewell::fakes

#endif  // DOZEWELL_TESTS_FAKES_MACHINE_H_
