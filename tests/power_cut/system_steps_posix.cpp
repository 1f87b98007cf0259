#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>

#include "base/file.h"
#include "power_cut/system_steps.h"

namespace dozewell::power_cut {
namespace {

std::string heldFile;

// Whether the call is the system's own to make; else it fails with that error.
bool Goes(int error, bool reads = false) {
  switch (NextTurn(reads)) {
    case Turn::Go:
      return true;
    case Turn::Fail:
      errno = error;
      return false;
    case Turn::End:
      EndProcess();
  }
  return false;
}

}  // namespace

// The linker brings the calls here.
void TakeCalls() {}

void EndProcess() { _exit(kEnded); }

Holder::Holder(const std::wstring& path) { heldFile = PathToSystem(path); }
Holder::~Holder() { heldFile.clear(); }

}  // namespace dozewell::power_cut

using dozewell::power_cut::EndProcess;
using dozewell::power_cut::Goes;
using dozewell::power_cut::heldFile;
using dozewell::power_cut::NextTurn;
using dozewell::power_cut::Turn;

// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming,bugprone-macro-parentheses):
// the linker's names.
#define FAILING(result, name, parameters, arguments, error, failure) \
  result __real_##name parameters;                                   \
  result __wrap_##name parameters { return Goes(error) ? __real_##name arguments : failure; }

extern "C" {

FILE* __real_fopen(const char* path, const char* mode);
FILE* __wrap_fopen(const char* path, const char* mode) {
  return Goes(EACCES) ? __real_fopen(path, mode) : nullptr;
}

FAILING(FILE*, fdopen, (int descriptor, const char* mode), (descriptor, mode), ENOMEM, nullptr)
FAILING(int, open, (const char* path, int flags, mode_t mode), (path, flags, mode), EACCES, -1)
FAILING(int, fsync, (int descriptor), (descriptor), EIO, -1)
FAILING(int, remove, (const char* path), (path), EACCES, -1)
FAILING(int, lstat, (const char* path, struct stat* status), (path, status), EACCES, -1)
FAILING(int, fstat, (int descriptor, struct stat* status), (descriptor, status), EIO, -1)
FAILING(int, fchown, (int descriptor, uid_t owner, gid_t group), (descriptor, owner, group), EPERM,
        -1)
FAILING(int, fchmod, (int descriptor, mode_t mode), (descriptor, mode), EPERM, -1)
FAILING(int, fflush, (FILE * file), (file), ENOSPC, EOF)

int __real_rename(const char* from, const char* to);
int __wrap_rename(const char* from, const char* to) {
  if (!Goes(EACCES)) return -1;
  if (heldFile == to) {
    errno = EBUSY;
    return -1;
  }
  return __real_rename(from, to);
}

size_t __real_fread(void* data, size_t size, size_t count, FILE* file);
size_t __wrap_fread(void* data, size_t size, size_t count, FILE* file) {
  if (Goes(EIO, true)) return __real_fread(data, size, count, file);
  // The stream remembers that it failed.
  const int descriptor = fileno(file);
  const int copy = dup(descriptor);
  const int unreadable = __real_open("/dev/null", O_WRONLY, 0);
  dup2(unreadable, descriptor);
  static_cast<void>(__real_fread(data, 1, 1, file));
  dup2(copy, descriptor);
  close(copy);
  close(unreadable);
  errno = EIO;
  return 0;
}

size_t __real_fwrite(const void* data, size_t size, size_t count, FILE* file);
size_t __wrap_fwrite(const void* data, size_t size, size_t count, FILE* file) {
  const Turn turn = NextTurn();
  if (turn == Turn::Go) return __real_fwrite(data, size, count, file);
  const size_t written = __real_fwrite(data, size, count / 2, file);
  __real_fflush(file);
  if (turn == Turn::End) EndProcess();
  errno = ENOSPC;
  return written;
}

// What fails to be closed is closed.
int __real_fclose(FILE* file);
int __wrap_fclose(FILE* file) {
  const bool goes = Goes(EIO);
  const int result = __real_fclose(file);
  return goes ? result : EOF;
}

}  // extern "C"
// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming,bugprone-macro-parentheses)
