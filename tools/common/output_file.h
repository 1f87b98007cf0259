#ifndef DOZEWELL_COMMON_OUTPUT_FILE_H_
#define DOZEWELL_COMMON_OUTPUT_FILE_H_

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>

#include "base/file.h"
#include "common/interrupts.h"

namespace dozewell {

// A file that the user named for output. New content is written to a temporary file in the same
// folder, which takes the file's place once it is complete. So a failure leaves an existing file as
// it was, and other programs see the old or the new content. The new file has the owner and the
// access rights of the old one; where this account cannot give it the owner, the content is copied
// into the old file instead. A link is followed. What goes to standard output is written on Commit.
// All operations throw ToolError.
class OutputFile {
 public:
  // Refuses the name of something other than a file, such as a folder or a device.
  explicit OutputFile(std::string name);
  // Removes the temporary file if it was not committed.
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  // Where the temporary file will be. Nothing is there before Prepare.
  const std::wstring& TemporaryPath() const { return temporaryPath_; }

  // Writes the temporary file. The program cannot be interrupted before this object is gone.
  void Prepare(const void* data, size_t size);

  // The same piece by piece, for what is too large for memory.
  void Append(const void* data, size_t size);

  // Puts what was written in place, and deletes what the service has left waiting beside a file of
  // its own, which would count instead.
  void Commit();

  void Write(const void* data, size_t size) {
    Prepare(data, size);
    Commit();
  }

 private:
  void Flush();

  std::string name_;
  std::wstring path_;
  std::wstring temporaryPath_;
  std::optional<HeldInterrupts> held_;  // while there is a temporary file
  File file_;                           // while it is written
  std::string forStandardOutput_;
};

// A file that a command reads, if it is given, and as what the user knows it.
struct InputName {
  const char* what;
  std::optional<std::string> name;
};

// Throws ToolError when an output is one of these inputs, also through links. To be called before
// any of them is read.
void RequireNoInput(const std::string& output, std::initializer_list<InputName> inputs);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_OUTPUT_FILE_H_
