#ifndef DOZEWELL_BASE_DURABLE_FILE_H_
#define DOZEWELL_BASE_DURABLE_FILE_H_

#include <array>
#include <cstddef>
#include <string>

#include "base/file.h"

namespace dozewell {

// A file that is written as a whole, and whose content outlives a power cut, a full disk and an
// open handle of somebody else: at any moment either its old or its new content is complete on the
// disk. The new content is written beside the file and takes its place in one step. Where somebody
// holds the file, the new content waits beside it, counts from then on, and is also written into
// the file; where nothing can be made beside the file, it is only written in place.
//
// One thread at a time may work on a file. Nothing is reported.

// What is put behind the file's name for the files beside it: new content that is being written,
// new content that is complete and waits, and a file that could not be read and was set aside.
inline constexpr std::array<const wchar_t*, 3> kSideFileSuffixes = {L".part", L".new", L".unread"};

// Opens the newest complete content for reading; null when there is none or it does not open.
File OpenDurableFile(const std::wstring& path);

// The newest complete content.
FileContent ReadDurableFile(const std::wstring& path);

// Puts content that still waits beside the file in its place. To be called at a start and before a
// write.
void FinishWriting(const std::wstring& path);

// The content that is about to be replaced, with writing finished. A file whose medium fails is set
// aside, in place of one that was before, and counts as missing. Only a missing file and one that
// was read may be written.
FileContent ReadBeforeWriting(const std::wstring& path);

// Replaces the content, or creates the file. True when it is safe on the disk. Otherwise either the
// old or the new content counts.
bool WriteDurableFile(const std::wstring& path, const void* data, size_t size);

// Deletes the file and those beside it.
void RemoveDurableFile(const std::wstring& path);

}  // namespace dozewell

#endif  // DOZEWELL_BASE_DURABLE_FILE_H_
