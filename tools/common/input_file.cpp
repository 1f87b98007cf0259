#include "common/input_file.h"

#include <cerrno>
#include <cstddef>
#include <cstdio>

#include "base/file.h"
#include "common/messages.h"
#include "common/standard_stream.h"
#include "common/tool_error.h"

namespace dozewell {
namespace {

ToolError CannotBeRead(const std::string& name) {
  return ToolError(WithReason(name + ": cannot be read"));
}

std::vector<unsigned char> ReadToEnd(std::FILE* file, const std::string& name, size_t most) {
  constexpr size_t kPortion = 65536;
  std::vector<unsigned char> content;
  for (size_t got = kPortion; got == kPortion;) {
    const size_t start = content.size();
    content.resize(start + kPortion);
    got = std::fread(content.data() + start, 1, kPortion, file);
    content.resize(start + got);
    if (content.size() > most) {
      throw ToolError(name + ": larger than " + std::to_string(most) +
                      " bytes, more than any such file needs");
    }
  }
  if (std::ferror(file) != 0) throw CannotBeRead(name);
  return content;
}

}  // namespace

std::vector<unsigned char> ReadInput(const std::string& name, size_t most) {
  auto content = ReadInputIfExists(name, most);
  if (!content) throw CannotBeRead(name);
  return *std::move(content);
}

std::optional<std::vector<unsigned char>> ReadInputIfExists(const std::string& name, size_t most) {
  errno = 0;
  if (IsStandardStream(name)) return ReadToEnd(stdin, "standard input", most);
  const File file = OpenFile(PathFromSystem(name), "rb");
  if (file) return ReadToEnd(file.get(), name, most);
  if (errno != ENOENT) throw CannotBeRead(name);
  return std::nullopt;
}

std::string_view AsText(const std::vector<unsigned char>& bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

}  // namespace dozewell
