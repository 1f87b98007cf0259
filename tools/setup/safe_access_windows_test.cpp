#include <doctest/doctest.h>
#include <windows.h>

#include <string>

#include "setup/safe_access.h"
#include "support/access_rights_windows.h"

namespace dozewell::setup {

using support::FileAccessStub;

namespace {

struct Row {
  const wchar_t* access;
  bool isChangeable;  // by others
};

}  // namespace

TEST_CASE("what others can do with a file is told from its owner and its rights") {
  const Row rows[] = {
      {L"O:BAD:P(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)(A;OICI;0x1200a9;;;BU)", false},
      // The folder of all programs, with its owner, who is no account of anybody's.
      {L"O:S-1-5-80-956008885-3418522649-1831038044-1853292631-2271478464"
       L"D:P(A;;FA;;;S-1-5-80-956008885-3418522649-1831038044-1853292631-2271478464)"
       L"(A;;0x1301bf;;;SY)(A;OICIIO;GA;;;SY)(A;;0x1301bf;;;BA)(A;OICIIO;GA;;;BA)"
       L"(A;;0x1200a9;;;BU)(A;OICIIO;GXGR;;;BU)(A;OICIIO;GA;;;CO)",
       false},
      {L"O:SYD:(A;;FA;;;OW)", false},
      {L"O:SYD:(D;;FA;;;WD)", false},
      {L"O:S-1-5-21-1-2-3-1001D:(A;;FA;;;SY)", true},  // a user
      {L"O:BUD:(A;;FA;;;SY)", true},
      {L"O:SY", true},  // no list of rights, so everybody has all
      {L"O:SYD:(A;;FA;;;SY)(A;;FA;;;AU)", true},
      {L"O:SYD:(A;;FA;;;SY)(A;OICIIO;SDGXGWGR;;;AU)", true},  // what is created in it
      {L"O:SYD:(A;;0x2;;;BU)", true},                         // add a file
      {L"O:SYD:(A;;0x4;;;BU)", true},                         // add a folder
      {L"O:SYD:(A;;0x40;;;BU)", true},                        // delete what is in it
      {L"O:SYD:(A;;0x100;;;BU)", true},                       // make it a link
      {L"O:SYD:(A;;SD;;;BU)", true},
      {L"O:SYD:(A;;WD;;;BU)", true},
      {L"O:SYD:(A;;WO;;;BU)", true},
      {L"O:SYD:(A;;GA;;;S-1-5-21-1-2-3-1001)", true},
  };
  FileAccessStub access;
  for (const Row& row : rows) {
    CAPTURE(std::wstring(row.access).size());
    access.Have(row.access);
    CHECK(OthersMayChange(ReadAccessOfOthers(nullptr)) == row.isChangeable);
  }
}

TEST_CASE("rights on a folder and those on what will be created in it are told apart") {
  FileAccessStub access;
  access.Have(L"O:SYD:(A;;0x1200a9;;;BU)(A;OICIIO;SD;;;AU)(A;CI;0x4;;;BU)(A;OICI;FA;;;BA)");
  const AccessOfOthers found = ReadAccessOfOthers(nullptr);
  CHECK_FALSE(found.isOwner);
  CHECK(found.rights == 0x1200ad);
  CHECK(found.inherited == (DELETE | 0x4));
  CHECK((found.rights & kRightsToRead) != 0);
  CHECK((found.rights & kRightsToReplace) == 0);
}

}  // namespace dozewell::setup
