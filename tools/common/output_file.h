#ifndef DOZEWELL_COMMON_OUTPUT_FILE_H_
#define DOZEWELL_COMMON_OUTPUT_FILE_H_

#include <cstddef>
#include <string>

namespace dozewell {

// A file that the user named for output. It is written under a temporary name in the same folder
// and takes its own name once complete, so a failure leaves an existing file as it was. All
// operations throw ToolError.
class OutputFile {
 public:
  // Refuses the name of something other than a file, such as a folder or a device.
  explicit OutputFile(std::string name);
  // Removes what was not committed.
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  // The temporary name, for a caller who writes the file without Write. There is no such file yet.
  const std::wstring& TemporaryPath() const { return temporaryPath_; }

  // Puts the file in place that the caller has written to TemporaryPath. It must have this size.
  void Commit(size_t size);

  // Writes the file and puts it in place.
  void Write(const void* data, size_t size);

 private:
  std::string name_;
  std::wstring path_;
  std::wstring temporaryPath_;
};

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_OUTPUT_FILE_H_
