#include "base/file.h"

#include <stdexcept>

namespace dozewell {

std::optional<std::vector<unsigned char>> ReadWholeFile(const std::wstring& path) {
  const File file = OpenFile(path, "rb");
  if (!file) return std::nullopt;
  const int64_t size = SizeOfFile(file.get());
  if (size < 0) return std::nullopt;
  std::vector<unsigned char> content(static_cast<size_t>(size));
  if (std::fread(content.data(), 1, content.size(), file.get()) != content.size()) {
    return std::nullopt;
  }
  return content;
}

bool WriteWholeFile(const std::wstring& path, const void* data, size_t size) {
  File file = OpenFile(path, "wb");
  if (!file) return false;
  // Empty data may have a null address, which fwrite does not accept.
  const bool written = size == 0 || std::fwrite(data, 1, size, file.get()) == size;
  return std::fclose(file.release()) == 0 && written;
}

std::wstring PathInFolder(const std::wstring& folder, const wchar_t* name) {
  if (folder.empty()) throw std::out_of_range("invalid string position");
  std::wstring path = folder;
  if (path.back() != L'\\') path += L'\\';
  return path += name;
}

}  // namespace dozewell
