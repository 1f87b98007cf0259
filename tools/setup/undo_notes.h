#ifndef DOZEWELL_SETUP_UNDO_NOTES_H_
#define DOZEWELL_SETUP_UNDO_NOTES_H_

#include <string>
#include <vector>

namespace dozewell::setup {

// What a step has changed, for the step that undoes it when the installation fails. The two are
// processes of their own, so the notes are in the registry, where only administrators and the
// system can write. The installation's last step, or the last one that undoes something, forgets
// them all. Everything throws SystemError when the registry refuses.

inline constexpr wchar_t kServiceNotes[] = L"Service";
inline constexpr wchar_t kDataFolderNotes[] = L"DataFolder";
inline constexpr wchar_t kInstallFolderNotes[] = L"InstallFolder";

// The notes of one step, which begin anew with the object.
class UndoNotes {
 public:
  explicit UndoNotes(const wchar_t* step);

  // A note is one line, and not empty. It is kept at once.
  void Add(const std::wstring& note);

 private:
  const wchar_t* step_;
  std::wstring notes_;  // each with its terminating zero
};

// In the order in which they were made.
std::vector<std::wstring> ReadUndoNotes(const wchar_t* step);

void ForgetUndoNotes();

}  // namespace dozewell::setup

#endif  // DOZEWELL_SETUP_UNDO_NOTES_H_
