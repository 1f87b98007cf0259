#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <string>
#include <vector>

#include "base/side_file.h"

namespace dozewell {
namespace {

std::optional<struct stat> StatusOf(const std::wstring& path) {
  struct stat status;
  if (lstat(PathToSystem(path).c_str(), &status) != 0) return std::nullopt;
  return status;
}

// Rights of further users and groups, which a file may have beside its mode.
bool GiveAccessList(int descriptor, const std::string& replaced) {
  constexpr const char* kAccessList = "system.posix_acl_access";
  const ssize_t size = lgetxattr(replaced.c_str(), kAccessList, nullptr, 0);
  if (size <= 0) return true;
  std::vector<char> list(static_cast<size_t>(size));
  return lgetxattr(replaced.c_str(), kAccessList, list.data(), list.size()) == size &&
         fsetxattr(descriptor, kAccessList, list.data(), list.size(), 0) == 0;
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
  if (model &&
      !(GiveRights(descriptor, *model) && GiveAccessList(descriptor, PathToSystem(replaced)))) {
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
