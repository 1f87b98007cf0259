#include "fuzz/memory_files.h"

#include <cstdio>

#include "base/file.h"
#include "base/side_file.h"
#include "base/utf8.h"

namespace dozewell {

std::map<std::wstring, std::vector<unsigned char>> fuzz::files;

std::wstring PathFromSystem(std::string_view name) { return WidenUtf8(name); }
std::string PathToSystem(const std::wstring& path) { return NarrowToUtf8(path); }

File OpenFile(const std::wstring& path, const char* mode) {
  const auto found = fuzz::files.find(path);
  if (found == fuzz::files.end()) return nullptr;
  std::vector<unsigned char>& content = found->second;
  // A stream cannot be opened on no memory, yet an empty file can be opened.
  if (content.empty()) return File(std::fopen("/dev/null", mode));
  return File(fmemopen(content.data(), content.size(), mode));
}

FileFailure WhyFileFailed() { return FileFailure::Missing; }

int64_t SizeOfFile(std::FILE* file) {
  const long position = std::ftell(file);
  std::fseek(file, 0, SEEK_END);
  const long size = std::ftell(file);
  std::fseek(file, position, SEEK_SET);
  return size;
}

bool FlushFile(std::FILE* file) { return std::fflush(file) == 0; }
bool FlushFolderOf(const std::wstring&) { return true; }

// Nothing can be made beside a file here.
File CreateSideFile(const std::wstring&, const std::wstring&) { return nullptr; }
bool HasOwnerOf(const std::wstring&, const std::wstring&) { return true; }
bool IsOwnSideFile(const std::wstring&, const std::wstring&) { return false; }

bool RemoveFile(const std::wstring& path) { return fuzz::files.erase(path) != 0; }

bool ReplaceFileWith(const std::wstring& path, const std::wstring& replacement) {
  auto node = fuzz::files.extract(replacement);
  if (!node) return false;
  fuzz::files[path] = std::move(node.mapped());
  return true;
}

}  // namespace dozewell
