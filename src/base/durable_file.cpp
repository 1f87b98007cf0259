#include "base/durable_file.h"

#include <cstdio>
#include <utility>

#include "base/side_file.h"

namespace dozewell {
namespace {

std::wstring Begun(const std::wstring& path) { return path + kSideFileSuffixes[0]; }
std::wstring Newer(const std::wstring& path) { return path + kSideFileSuffixes[1]; }
std::wstring Unread(const std::wstring& path) { return path + kSideFileSuffixes[2]; }

// A side file gets this name only when it is complete on the disk, and keeps it until the file has
// the same content or newer content gets the name. So if it exists, it is the newest.
bool NewerWaits(const std::wstring& path) { return IsOwnSideFile(Newer(path), path); }

bool WriteInPlace(const std::wstring& path, const void* data, size_t size) {
  return WriteAndFlush(OpenFile(path, "wb"), data, size);
}

// Fails when another program holds the file, and when its owner would change.
bool MoveInPlace(const std::wstring& path) {
  return HasOwnerOf(Newer(path), path) && ReplaceFileWith(path, Newer(path));
}

// The side file stays until the file is complete.
bool CopyInPlace(const std::wstring& path, const void* data, size_t size) {
  if (!WriteInPlace(path, data, size)) return false;
  RemoveFile(Newer(path));
  return true;
}

enum class Beside { Complete, NotMade, NotWritten };

Beside WriteBeside(const std::wstring& path, const void* data, size_t size) {
  RemoveFile(Begun(path));
  File file = CreateSideFile(Begun(path), path);
  if (!file) {
    return WhyFileFailed() == FileFailure::NoRoom ? Beside::NotWritten : Beside::NotMade;
  }
  const bool written = WriteAndFlush(std::move(file), data, size);
  if (written && ReplaceFileWith(Newer(path), Begun(path))) {
    return FlushFolderOf(path) ? Beside::Complete : Beside::NotWritten;
  }
  RemoveFile(Begun(path));
  return written ? Beside::NotMade : Beside::NotWritten;
}

}  // namespace

std::wstring PathOfNewest(const std::wstring& path) {
  return NewerWaits(path) ? Newer(path) : path;
}

File OpenDurableFile(const std::wstring& path) { return OpenFile(PathOfNewest(path), "rb"); }

FileContent ReadDurableFile(const std::wstring& path) { return ReadContent(PathOfNewest(path)); }

void FinishWriting(const std::wstring& path) {
  if (!NewerWaits(path) || MoveInPlace(path)) return;
  const FileContent newer = ReadContent(Newer(path));
  if (newer.failure || !FlushFolderOf(path)) return;
  CopyInPlace(path, newer.bytes.data(), newer.bytes.size());
}

FileContent ReadBeforeWriting(const std::wstring& path) {
  FinishWriting(path);
  FileContent content = ReadDurableFile(path);
  if (content.failure != FileFailure::Broken) return content;
  // The failure may have been temporary.
  content = ReadDurableFile(path);
  if (content.failure == FileFailure::Broken && ReplaceFileWith(Unread(path), PathOfNewest(path))) {
    return ReadDurableFile(path);
  }
  return content;
}

bool WriteDurableFile(const std::wstring& path, const void* data, size_t size) {
  switch (WriteBeside(path, data, size)) {
    case Beside::Complete:
      return MoveInPlace(path) ? FlushFolderOf(path) : CopyInPlace(path, data, size);
    case Beside::NotMade:
      // A side file that could not be replaced would count as newer than what is written here.
      return !NewerWaits(path) && WriteInPlace(path, data, size);
    case Beside::NotWritten:
      // On a full volume writing in place would fail as well, after the old content was cut off.
      return false;
  }
  return false;
}

void RemoveDurableFile(const std::wstring& path) {
  // Side files go first: one that remained would become the file again.
  for (const wchar_t* const suffix : kSideFileSuffixes) RemoveFile(path + suffix);
  RemoveFile(path);
}

}  // namespace dozewell
