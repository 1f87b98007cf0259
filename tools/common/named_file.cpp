#include "common/named_file.h"

#include "base/file.h"

namespace dozewell {
namespace {

std::wstring FolderOf(const std::wstring& path) {
  const std::wstring folder = path.substr(0, path.size() - NameInFolder(path).size());
  return folder.empty() ? L"." : folder;
}

bool IsSame(const NamedFile& a, const NamedFile& b) {
  return a.kind != FileKind::Missing && a.kind == b.kind && a.volume == b.volume &&
         a.number == b.number;
}

}  // namespace

bool IsSameFile(const std::string& a, const std::string& b) {
  if (a == b) return true;
  const std::wstring pathA = PathFromSystem(a);
  const std::wstring pathB = PathFromSystem(b);
  const NamedFile fileA = LookUp(pathA);
  const NamedFile fileB = LookUp(pathB);
  if (fileA.kind != FileKind::Missing || fileB.kind != FileKind::Missing) {
    return IsSame(fileA, fileB);
  }
  return NameInFolder(pathA) == NameInFolder(pathB) &&
         IsSame(LookUp(FolderOf(pathA)), LookUp(FolderOf(pathB)));
}

std::wstring NameInFolder(const std::wstring& path) {
  // Windows takes slashes and the colon of a drive too. Elsewhere a path has no slash, and what is
  // before a colon only stays with the folder.
  return path.substr(path.find_last_of(L"\\/:") + 1);
}

}  // namespace dozewell
