#ifndef DOZEWELL_TESTS_SUPPORT_ACCESS_RIGHTS_WINDOWS_H_
#define DOZEWELL_TESTS_SUPPORT_ACCESS_RIGHTS_WINDOWS_H_

#include <cstdint>
#include <string>
#include <vector>

namespace dozewell::support {

// The parts of a security descriptor that a SECURITY_INFORMATION names, in the system's own text
// form.
std::string AccessText(void* descriptor, uint32_t parts);

// Gives everybody all rights on a file or folder.
void LetEverybodyWrite(const std::wstring& path);

// A file or folder, by the last part of its path, and the rights that it was given, as text.
struct GivenAccess {
  std::string name;
  std::string access;

  bool operator==(const GivenAccess&) const = default;
};

// Stands in for the access rights of all open files and folders, which the system under a test may
// not be able to keep. Ends with the object; at most one at a time.
class FileAccessStub {
 public:
  FileAccessStub();
  ~FileAccessStub();
  FileAccessStub(const FileAccessStub&) = delete;
  FileAccessStub& operator=(const FileAccessStub&) = delete;

  // The rights that every one has, as text. They stay what they are when others are given.
  void Have(const std::wstring& access);
  // What has been given since it was last asked.
  std::vector<GivenAccess> TakeGiven();
};

}  // namespace dozewell::support

#endif  // DOZEWELL_TESTS_SUPPORT_ACCESS_RIGHTS_WINDOWS_H_
