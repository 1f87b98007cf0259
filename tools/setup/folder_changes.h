#ifndef DOZEWELL_SETUP_FOLDER_CHANGES_H_
#define DOZEWELL_SETUP_FOLDER_CHANGES_H_

#include <string>

namespace dozewell::setup {

// A change that a step makes to a folder or file.
struct FolderChange {
  enum Kind { kMade, kMoved, kRights };

  Kind kind;
  std::wstring path;
  std::wstring detail;  // where it was moved to; or the rights that it had, as text

  bool operator==(const FolderChange&) const = default;
};

// A change as the note of it, and back. Throws std::runtime_error when it is no such note.
std::wstring NoteOf(const FolderChange& change);
FolderChange FolderChangeOf(const std::wstring& note);

}  // namespace dozewell::setup

#endif  // DOZEWELL_SETUP_FOLDER_CHANGES_H_
