#include <stdlib.h>
#include <sys/stat.h>

#include <memory>

#include "base/file.h"
#include "common/named_file.h"

namespace dozewell {
namespace {

struct FreeText {
  void operator()(char* text) const { free(text); }
};

bool IsLink(const char* name) {
  struct stat status;
  return lstat(name, &status) == 0 && S_ISLNK(status.st_mode);
}

}  // namespace

NamedFile LookUp(const std::wstring& path) {
  NamedFile found;
  found.path = path;
  const std::string name = PathToSystem(path);
  struct stat status;
  if (stat(name.c_str(), &status) != 0) return found;
  found.kind = S_ISREG(status.st_mode) ? FileKind::Regular : FileKind::Other;
  found.volume = status.st_dev;
  found.number = status.st_ino;
  if (IsLink(name.c_str())) {
    const std::unique_ptr<char, FreeText> target(realpath(name.c_str(), nullptr));
    if (target) found.path = PathFromSystem(target.get());
  }
  return found;
}

bool MoveOver(const std::wstring& path, const std::wstring& replacement) {
  return ReplaceFileWith(path, replacement);
}

}  // namespace dozewell
