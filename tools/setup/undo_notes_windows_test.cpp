#include <doctest/doctest.h>

#include "setup/undo_notes.h"
#include "support/registry_windows.h"

namespace dozewell::setup {

using namespace support;

using NoteTexts = std::vector<std::wstring>;

TEST_CASE("the notes of a step are read in their order, each as soon as it was made") {
  const CleanProductKeys keys;
  CHECK(ReadUndoNotes(kServiceNotes).empty());
  UndoNotes notes(kServiceNotes);
  notes.Add(L"first");
  CHECK(ReadUndoNotes(kServiceNotes) == NoteTexts{L"first"});
  notes.Add(L"the second one");
  CHECK(ReadUndoNotes(kServiceNotes) == NoteTexts{L"first", L"the second one"});
  CHECK(ReadUndoNotes(kDataFolderNotes).empty());
}

TEST_CASE("the notes of a step begin anew, and those of others stay") {
  const CleanProductKeys keys;
  UndoNotes(kServiceNotes).Add(L"of the service");
  UndoNotes(kDataFolderNotes).Add(L"of before");
  UndoNotes notes(kDataFolderNotes);
  CHECK(ReadUndoNotes(kDataFolderNotes).empty());
  notes.Add(L"of now");
  CHECK(ReadUndoNotes(kDataFolderNotes) == NoteTexts{L"of now"});
  CHECK(ReadUndoNotes(kServiceNotes) == NoteTexts{L"of the service"});
}

TEST_CASE("forgetting the notes leaves no key that has nothing else in it") {
  const CleanProductKeys keys;
  ForgetUndoNotes();
  UndoNotes(kServiceNotes).Add(L"of the service");
  ForgetUndoNotes();
  CHECK_FALSE(KeyExists(L"SOFTWARE\\Corisk"));
  SetValue(kCurrent, L"ServiceStatus", Dword(1));
  UndoNotes(kServiceNotes).Add(L"of the service");
  ForgetUndoNotes();
  CHECK(KeyExists(kCurrent));
  CHECK_FALSE(KeyExists(L"SOFTWARE\\Corisk\\Z7\\Undo"));
}

}  // namespace dozewell::setup
