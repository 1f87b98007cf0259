#ifndef DOZEWELL_COMMON_OUTPUT_FILE_H_
#define DOZEWELL_COMMON_OUTPUT_FILE_H_

#include <cstddef>
#include <string>

namespace dozewell {

// A file that the user named for output. It is written under a temporary name beside the named one
// and takes its name once complete, so a failure leaves whatever had that name as it was. All
// operations throw ToolError.
class OutputFile {
 public:
  // A name that something other than a file has, a folder or a device, is refused.
  explicit OutputFile(std::string name);
  // Removes what was not committed.
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  // Where to write to, for someone else who writes the file. Nothing is there yet.
  const std::wstring& TemporaryPath() const { return temporaryPath_; }

  // Puts the file, which someone else has written and which must have this size, in place.
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
