#include "common/output_file.h"

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include "base/file.h"
#include "common/messages.h"
#include "common/tool_error.h"

namespace dozewell {
namespace {

constexpr const char* kCannotBeWritten = ": cannot be written";

// Follows links, so that they stay when the file behind them is replaced.
std::string FileToReplace(const std::string& name) {
  namespace fs = std::filesystem;
  const fs::path path(std::u8string(name.begin(), name.end()));
  std::error_code ignored;
  const fs::file_status status = fs::status(path, ignored);
  if (!fs::exists(status)) return name;
  if (!fs::is_regular_file(status)) {
    throw ToolError(name + kCannotBeWritten + ": not a regular file");
  }
  if (!fs::is_symlink(path, ignored)) return name;
  const std::u8string target = fs::canonical(path).u8string();
  return std::string(target.begin(), target.end());
}

std::wstring UnusedPathBeside(const std::string& name) {
  // A device's name with any ending may still name the device, so the search has to stop.
  constexpr int kMostTries = 100;
  for (int number = 0; number < kMostTries; ++number) {
    std::wstring path = PathFromSystem(name + "." + std::to_string(number) + ".tmp");
    if (!OpenFile(path, "rb")) return path;
  }
  throw ToolError(name + kCannotBeWritten + ": no name beside it is free");
}

bool IsInFolder(const std::string& name) {
  namespace fs = std::filesystem;
  const fs::path folder = fs::path(std::u8string(name.begin(), name.end())).parent_path();
  std::error_code ignored;
  return folder.empty() || fs::is_directory(folder, ignored);
}

int64_t FileSize(const std::wstring& path) {
  const File file = OpenFile(path, "rb");
  return file ? SizeOfFile(file.get()) : -1;
}

}  // namespace

OutputFile::OutputFile(std::string name) : name_(std::move(name)) {
  const std::string file = FileToReplace(name_);
  path_ = PathFromSystem(file);
  temporaryPath_ = UnusedPathBeside(file);
}

OutputFile::~OutputFile() { RemoveFile(temporaryPath_); }

void OutputFile::Commit(size_t size) {
  errno = 0;
  const bool complete = FileSize(temporaryPath_) == static_cast<int64_t>(size);
  // Its writer has given up a file that is missing although its folder is there; that it is missing
  // is not the reason.
  if (!complete && errno == ENOENT && IsInFolder(name_)) errno = 0;
  if (!complete || !ReplaceFileWith(path_, temporaryPath_)) {
    throw ToolError(WithReason(name_ + kCannotBeWritten));
  }
}

void OutputFile::Write(const void* data, size_t size) {
  errno = 0;
  if (!WriteWholeFile(temporaryPath_, data, size)) {
    throw ToolError(WithReason(name_ + kCannotBeWritten));
  }
  Commit(size);
}

}  // namespace dozewell
