#include "setup/folder_changes.h"

#include <doctest/doctest.h>

#include <stdexcept>

namespace dozewell::setup {

TEST_CASE("a change to a folder is noted and read again") {
  struct Row {
    FolderChange change;
    const wchar_t* note;
  };
  const Row rows[] = {
      {{FolderChange::kMade, L"C:\\a b\\c", L""}, L"made|C:\\a b\\c|"},
      {{FolderChange::kMoved, L"C:\\a", L"C:\\a.untrusted"}, L"moved|C:\\a|C:\\a.untrusted"},
      {{FolderChange::kRights, L"C:\\a", L"O:BAD:P(A;;FA;;;SY)"},
       L"rights|C:\\a|O:BAD:P(A;;FA;;;SY)"},
  };
  for (const Row& row : rows) {
    CHECK(NoteOf(row.change) == row.note);
    CHECK(FolderChangeOf(row.note) == row.change);
  }
}

TEST_CASE("what is no note of a change is refused") {
  for (const wchar_t* const note : {L"", L"made", L"made|C:\\a", L"lost|C:\\a|", L"|C:\\a|"}) {
    CHECK_THROWS_AS(FolderChangeOf(note), std::runtime_error);
  }
}

}  // namespace dozewell::setup
