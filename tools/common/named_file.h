#ifndef DOZEWELL_COMMON_NAMED_FILE_H_
#define DOZEWELL_COMMON_NAMED_FILE_H_

#include <cstdint>
#include <string>

namespace dozewell {

enum class FileKind {
  Missing,  // nothing is there, or it cannot be looked at
  Regular,
  Other,  // a folder, a device, a pipe
};

// What a path leads to, through links.
struct NamedFile {
  FileKind kind = FileKind::Missing;
  std::wstring path;  // where it stands itself
  // The same for two paths exactly when they lead to the same file. Meaningless for Missing.
  uint64_t volume = 0;
  uint64_t number = 0;
};

NamedFile LookUp(const std::wstring& path);

// Whether two names that the user gave stand for one file, be it through links or because the file
// has several names. Of files that do not exist yet, folder and name are compared.
bool IsSameFile(const std::string& a, const std::string& b);

// The last part of a path.
std::wstring NameInFolder(const std::wstring& path);

// Puts a file in the place of another one in the same folder in one step. While other programs hold
// that one, this tries again for some seconds. False, with errno set, when it could not be done.
bool MoveOver(const std::wstring& path, const std::wstring& replacement);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_NAMED_FILE_H_
