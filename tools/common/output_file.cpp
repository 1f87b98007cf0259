#include "common/output_file.h"

#include <cerrno>
#include <random>
#include <utility>

#include "base/file.h"
#include "base/side_file.h"
#include "common/messages.h"
#include "common/named_file.h"
#include "common/service_file.h"
#include "common/standard_stream.h"
#include "common/tool_error.h"

namespace dozewell {
namespace {

ToolError CannotBeWritten(const std::string& name) {
  return ToolError(WithReason(name + ": cannot be written"));
}

ToolError CannotBeWritten(const std::string& name, const std::string& why) {
  return ToolError(name + ": cannot be written: " + why);
}

// A name that nobody can take beforehand, be it to stop the tool or to see what it writes.
std::wstring UnguessableName() {
  constexpr int kDigits = 20;
  std::random_device random;
  std::wstring name = L"dozewell-";
  for (int i = 0; i < kDigits; ++i) name += L"0123456789abcdef"[random() % 16];
  return name + L".tmp";
}

std::wstring Beside(const std::wstring& path) {
  return path.substr(0, path.size() - NameInFolder(path).size()) + UnguessableName();
}

// Keeps the owner of `path`.
bool CopyInto(const std::wstring& path, const std::wstring& source) {
  const FileContent content = ReadContent(source);
  return !content.failure &&
         WriteAndFlush(OpenFile(path, "wb"), content.bytes.data(), content.bytes.size());
}

}  // namespace

OutputFile::OutputFile(std::string name) : name_(std::move(name)) {
  const NamedFile file = LookUp(PathFromSystem(name_));
  if (file.kind == FileKind::Other) throw CannotBeWritten(name_, "not a regular file");
  path_ = file.path;
  temporaryPath_ = Beside(path_);
}

OutputFile::~OutputFile() {
  file_.reset();
  if (held_) RemoveFile(temporaryPath_);
}

void OutputFile::Prepare(const void* data, size_t size) {
  Append(data, size);
  if (file_) Flush();
}

void OutputFile::Append(const void* data, size_t size) {
  if (IsStandardStream(name_)) {
    forStandardOutput_.append(static_cast<const char*>(data), size);
    return;
  }
  errno = 0;
  if (!held_) {
    held_.emplace();
    file_ = CreateSideFile(temporaryPath_, path_);
    if (!file_) held_.reset();
  }
  // Empty data may have a null address, which fwrite does not accept.
  if (!file_ || (size > 0 && std::fwrite(data, 1, size, file_.get()) != size)) {
    throw CannotBeWritten(name_);
  }
}

void OutputFile::Flush() {
  errno = 0;
  if (!WriteAndFlush(std::move(file_), nullptr, 0)) throw CannotBeWritten(name_);
}

void OutputFile::Commit() {
  if (IsStandardStream(name_)) {
    PrintOutput(forStandardOutput_);
    return;
  }
  if (file_) Flush();
  errno = 0;
  const bool keepsOwner = HasOwnerOf(temporaryPath_, path_);
  if (!(keepsOwner ? MoveOver(path_, temporaryPath_) : CopyInto(path_, temporaryPath_))) {
    throw CannotBeWritten(name_);
  }
  if (!keepsOwner) RemoveFile(temporaryPath_);
  held_.reset();
  RemoveWaiting(path_);
}

void RequireNoInput(const std::string& output, std::initializer_list<InputName> inputs) {
  if (IsStandardStream(output)) return;
  for (const InputName& input : inputs) {
    if (!input.name) continue;
    if (IsSameFile(output, *input.name) || IsSameFile(output, NameThatCounts(*input.name))) {
      throw CannotBeWritten(output, std::string("it is also ") + input.what);
    }
  }
}

}  // namespace dozewell
