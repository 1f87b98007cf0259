#include "base/file.h"

#include <stdexcept>
#include <utility>

namespace dozewell {

FileContent ReadContent(const std::wstring& path) {
  const File file = OpenFile(path, "rb");
  if (!file) return {WhyFileFailed(), {}};
  const int64_t size = SizeOfFile(file.get());
  if (size < 0) return {FileFailure::Held, {}};
  std::vector<unsigned char> bytes(static_cast<size_t>(size));
  if (std::fread(bytes.data(), 1, bytes.size(), file.get()) != bytes.size()) {
    return {std::ferror(file.get()) != 0 ? WhyFileFailed() : FileFailure::Held, {}};
  }
  return {std::nullopt, std::move(bytes)};
}

std::optional<std::vector<unsigned char>> ReadWholeFile(const std::wstring& path) {
  FileContent content = ReadContent(path);
  if (content.failure) return std::nullopt;
  return std::move(content.bytes);
}

bool WriteWholeFile(const std::wstring& path, const void* data, size_t size) {
  File file = OpenFile(path, "wb");
  if (!file) return false;
  // Empty data may have a null address, which fwrite does not accept.
  const bool written = size == 0 || std::fwrite(data, 1, size, file.get()) == size;
  return std::fclose(file.release()) == 0 && written;
}

bool WriteAndFlush(File file, const void* data, size_t size) {
  if (!file) return false;
  // Empty data may have a null address, which fwrite does not accept.
  const bool written = size == 0 || std::fwrite(data, 1, size, file.get()) == size;
  const bool flushed = written && FlushFile(file.get());
  return std::fclose(file.release()) == 0 && flushed;
}

std::wstring PathInFolder(const std::wstring& folder, const wchar_t* name) {
  if (folder.empty()) throw std::out_of_range("invalid string position");
  std::wstring path = folder;
  if (path.back() != L'\\') path += L'\\';
  return path += name;
}

}  // namespace dozewell
