#ifndef DOZEWELL_BASE_FILE_H_
#define DOZEWELL_BASE_FILE_H_

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dozewell {

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
// Null when the file could not be opened.
using File = std::unique_ptr<std::FILE, FileCloser>;

// The path that the system names with these bytes (UTF-8 on Windows, any bytes elsewhere). Paths
// are wide throughout and separated by backslashes; where the system's separator is another, a
// backslash in a name is escaped as WidenUtf8 escapes a byte that is not UTF-8.
std::wstring PathFromSystem(std::string_view name);

// The same path in the system's own bytes, as a user knows it.
std::string PathToSystem(const std::wstring& path);

// Opens a file with fopen's modes.
File OpenFile(const std::wstring& path, const char* mode);

// Why a file could not be opened, read or written.
enum class FileFailure {
  Missing,  // there is no such file
  Held,     // another program holds the file, or the cause is unknown; a later try may succeed
  Broken,   // the disk cannot read or write it
  NoRoom,   // the volume is full
};

// The cause when a call that opened, read or created a file has failed. To be called right after
// it, on the same thread.
FileFailure WhyFileFailed();

// The size in bytes of an open file, or -1. The position is kept.
int64_t SizeOfFile(std::FILE* file);

// Writes everything that an open file still buffers to the disk; false when that failed.
bool FlushFile(std::FILE* file);

// Deletes a file; false when that failed, a missing file included.
bool RemoveFile(const std::wstring& path);

// Moves a file to another name on the same volume, over a file of that name, in one step.
bool ReplaceFileWith(const std::wstring& path, const std::wstring& replacement);

// Writes the names of the files in the folder of `path` to the disk, after a move; false when that
// failed.
bool FlushFolderOf(const std::wstring& path);

// The whole content of a file, or why there is none.
struct FileContent {
  std::optional<FileFailure> failure;
  std::vector<unsigned char> bytes;
};
FileContent ReadContent(const std::wstring& path);

// The whole content of a file, or nothing when it does not open or cannot be read.
std::optional<std::vector<unsigned char>> ReadWholeFile(const std::wstring& path);

// Truncates or creates a file and writes it in one write; false when it does not open or not all
// could be written.
bool WriteWholeFile(const std::wstring& path, const void* data, size_t size);

// Writes to an open file, flushes it to the disk and closes it; false when any of that failed, or
// when there is no file.
bool WriteAndFlush(File file, const void* data, size_t size);

// `folder` and `name` with exactly one backslash between them. Throws
// std::out_of_range("invalid string position") for an empty folder.
std::wstring PathInFolder(const std::wstring& folder, const wchar_t* name);

}  // namespace dozewell

#endif  // DOZEWELL_BASE_FILE_H_
