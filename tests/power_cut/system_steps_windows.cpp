#include <io.h>
#include <windows.h>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <string_view>

#include "power_cut/system_steps.h"
#include "support/program_imports.h"

namespace dozewell::power_cut {
namespace {

// How a call fails.
struct Failure {
  DWORD error;
  intptr_t result;
};

// Stands before a function of the system.
template <size_t place, typename Function>
struct Call;

template <size_t place, typename Result, typename... Arguments>
struct Call<place, Result(Arguments...)> {
  static inline Result (*System)(Arguments...) = nullptr;
  static inline Failure failure = {};
  static inline bool reads = false;

  static Result Make(Arguments... arguments) {
    switch (NextTurn(reads)) {
      case Turn::Go:
        return System(arguments...);
      case Turn::End:
        EndProcess();
      case Turn::Fail:
        break;
    }
    SetLastError(failure.error);
    errno = EACCES;
    _doserrno = failure.error;
    if constexpr (std::is_pointer_v<Result>) {
      return std::bit_cast<Result>(failure.result);
    } else {
      return static_cast<Result>(failure.result);
    }
  }
};

struct Import {
  std::string_view name;
  void* standIn;
  void** system;
};

template <size_t place, typename Function>
Import Before(std::string_view name, Failure failure) {
  using Made = Call<place, Function>;
  Made::failure = failure;
  return {name, reinterpret_cast<void*>(&Made::Make), reinterpret_cast<void**>(&Made::System)};
}

size_t (*systemFread)(void*, size_t, size_t, FILE*) = nullptr;
size_t (*systemFwrite)(const void*, size_t, size_t, FILE*) = nullptr;
int (*systemFclose)(FILE*) = nullptr;

// The stream remembers that it failed.
size_t Read(void* data, size_t size, size_t count, FILE* file) {
  const Turn turn = NextTurn(true);
  if (turn == Turn::Go) return systemFread(data, size, count, file);
  if (turn == Turn::End) EndProcess();
  file->_flag |= _IOERR;
  _doserrno = ERROR_CRC;
  return 0;
}

size_t Write(const void* data, size_t size, size_t count, FILE* file) {
  const Turn turn = NextTurn();
  if (turn == Turn::Go) return systemFwrite(data, size, count, file);
  const size_t written = systemFwrite(data, size, count / 2, file);
  std::fflush(file);
  if (turn == Turn::End) EndProcess();
  _doserrno = ERROR_DISK_FULL;
  return written;
}

// What fails to be closed is closed.
int Close(FILE* file) {
  const Turn turn = NextTurn();
  if (turn == Turn::End) EndProcess();
  const int result = systemFclose(file);
  return turn == Turn::Go ? result : EOF;
}

}  // namespace

void EndProcess() {
  TerminateProcess(GetCurrentProcess(), kEnded);
  for (;;) Sleep(INFINITE);
}

void TakeCalls() {
  const auto invalid = static_cast<intptr_t>(-1);
#define BEFORE(name, error, result) Before<__LINE__, decltype(name)>(#name, {error, result})
  const Import imports[] = {
      BEFORE(CreateFileW, ERROR_ACCESS_DENIED, invalid),
      BEFORE(GetFileInformationByHandle, ERROR_ACCESS_DENIED, 0),
      BEFORE(GetKernelObjectSecurity, ERROR_ACCESS_DENIED, 0),
      BEFORE(SetKernelObjectSecurity, ERROR_ACCESS_DENIED, 0),
      BEFORE(MoveFileExW, ERROR_ACCESS_DENIED, 0),
      BEFORE(DeleteFileW, ERROR_ACCESS_DENIED, 0),
      BEFORE(_wfopen, ERROR_ACCESS_DENIED, 0),
      BEFORE(_wfdopen, ERROR_TOO_MANY_OPEN_FILES, 0),
      BEFORE(_open_osfhandle, ERROR_TOO_MANY_OPEN_FILES, invalid),
      BEFORE(_filelengthi64, ERROR_CRC, invalid),
      BEFORE(_commit, ERROR_IO_DEVICE, invalid),
      BEFORE(fflush, ERROR_DISK_FULL, EOF),
      {"fread", reinterpret_cast<void*>(&Read), reinterpret_cast<void**>(&systemFread)},
      {"fwrite", reinterpret_cast<void*>(&Write), reinterpret_cast<void**>(&systemFwrite)},
      {"fclose", reinterpret_cast<void*>(&Close), reinterpret_cast<void**>(&systemFclose)},
  };
#undef BEFORE
  support::VisitImports(GetModuleHandleW(nullptr), [&](const char* name, uint64_t& address) {
    const auto* const import = std::ranges::find(imports, name, &Import::name);
    if (import == std::end(imports)) return;
    *import->system = support::ReplaceAddress(address, import->standIn);
  });
}

Holder::Holder(const std::wstring& path) {
  const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                  nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file != INVALID_HANDLE_VALUE) handle_ = file;
}

Holder::~Holder() {
  if (handle_ != nullptr) CloseHandle(handle_);
}

}  // namespace dozewell::power_cut
