#ifndef DOZEWELL_TESTS_SUPPORT_TEMP_FOLDER_H_
#define DOZEWELL_TESTS_SUPPORT_TEMP_FOLDER_H_

#include <filesystem>
#include <string>

namespace dozewell {

// A new folder, deleted with its contents at the end. Its path is in the wide form that base's
// files take, without a backslash at its end.
class TempFolder {
 public:
  TempFolder();
  ~TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::wstring& Path() const { return path_; }
  std::wstring File(const wchar_t* name) const { return path_ + L'\\' + name; }
  bool IsEmpty() const { return std::filesystem::is_empty(folder_); }

 private:
  std::filesystem::path folder_;
  std::wstring path_;
};

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_SUPPORT_TEMP_FOLDER_H_
