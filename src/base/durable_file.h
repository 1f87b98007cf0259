#ifndef DOZEWELL_BASE_DURABLE_FILE_H_
#define DOZEWELL_BASE_DURABLE_FILE_H_

#include <array>
#include <cstddef>
#include <string>

#include "base/file.h"

namespace dozewell {

// Reading and writing of whole files that survive power cuts, full disks and open handles of other
// programs: at every moment the old or the new content is complete on the disk. New content is
// written to a side file, which replaces the file in one step. While another program prevents that,
// the side file stays, counts instead of the file, and is also copied into it. If no side file can
// be created, the file is written in place.
//
// Only one thread at a time may use a file. Failures are not reported.

// What the names of the side files add to that of the file: new content while it is written, new
// content that is complete, and a file that the disk could not read.
inline constexpr std::array<const wchar_t*, 3> kSideFileSuffixes = {L".part", L".new", L".unread"};

// Where the newest complete content is: the file, or new content that waits beside it.
std::wstring PathOfNewest(const std::wstring& path);

// Opens the newest complete content for reading; null when there is none or opening fails.
File OpenDurableFile(const std::wstring& path);

// The newest complete content.
FileContent ReadDurableFile(const std::wstring& path);

// Puts complete new content that an earlier write left beside the file in its place, if there is
// any. To be called at a start and before a write.
void FinishWriting(const std::wstring& path);

// FinishWriting and ReadDurableFile, for a caller that is about to replace the content. A file that
// the disk cannot read is set aside, over an earlier one, and is missing then. The caller may write
// only if the file was read or is missing.
FileContent ReadBeforeWriting(const std::wstring& path);

// Replaces the content, or creates the file. True when the new content is on the disk; otherwise
// the newest complete content is the old or the new one.
bool WriteDurableFile(const std::wstring& path, const void* data, size_t size);

// Deletes the file and its side files.
void RemoveDurableFile(const std::wstring& path);

}  // namespace dozewell

#endif  // DOZEWELL_BASE_DURABLE_FILE_H_
