#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>

#include "base/side_file.h"

namespace dozewell {
namespace {

std::optional<struct stat> StatusOf(const std::wstring& path) {
  struct stat status;
  if (lstat(PathToSystem(path).c_str(), &status) != 0) return std::nullopt;
  return status;
}

bool GiveRights(int descriptor, const struct stat& replaced) {
  // Whether the owner could be set is checked by HasOwnerOf before the file is replaced.
  static_cast<void>(fchown(descriptor, replaced.st_uid, replaced.st_gid) == 0);
  return fchmod(descriptor, replaced.st_mode & 07777) == 0;
}

}  // namespace

File CreateSideFile(const std::wstring& path, const std::wstring& replaced) {
  const auto model = StatusOf(replaced);
  const std::string name = PathToSystem(path);
  const int descriptor =
      open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, model ? 0600 : 0666);
  if (descriptor < 0) return nullptr;
  if (model && !GiveRights(descriptor, *model)) {
    close(descriptor);
    RemoveFile(path);
    errno = EPERM;
    return nullptr;
  }
  File stream(fdopen(descriptor, "wb"));
  if (!stream) close(descriptor);
  return stream;
}

bool HasOwnerOf(const std::wstring& path, const std::wstring& replaced) {
  const auto model = StatusOf(replaced);
  const auto status = StatusOf(path);
  return !model || (status && status->st_uid == model->st_uid && status->st_gid == model->st_gid);
}

bool IsOwnSideFile(const std::wstring& path, const std::wstring& replaced) {
  const auto status = StatusOf(path);
  if (!status || !S_ISREG(status->st_mode) || status->st_nlink != 1) return false;
  const auto model = StatusOf(replaced);
  return status->st_uid == geteuid() || status->st_uid == 0 ||
         (model && status->st_uid == model->st_uid);
}

}  // namespace dozewell
