#include <doctest/doctest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

#include "base/durable_file.h"
#include "base/side_file.h"
#include "support/temp_folder.h"

namespace dozewell {
namespace {

constexpr uid_t kOther = 65534;

struct stat FoundAt(const std::wstring& path) {
  struct stat status = {};
  REQUIRE(lstat(PathToSystem(path).c_str(), &status) == 0);
  return status;
}

// Only one account may give files to others and act as another one.
bool IsRoot() { return geteuid() == 0; }

// Acts as an ordinary account for a while.
class AsOther {
 public:
  AsOther() { REQUIRE(seteuid(kOther) == 0); }
  ~AsOther() { static_cast<void>(seteuid(0) == 0); }
  AsOther(const AsOther&) = delete;
  AsOther& operator=(const AsOther&) = delete;
};

// A folder in which everybody may create files, with a file of root's that everybody may write.
struct SharedFolder {
  TempFolder folder;
  std::wstring path = folder.File(L"f");

  SharedFolder() {
    REQUIRE(chmod(PathToSystem(folder.Path()).c_str(), 0777) == 0);
    REQUIRE(WriteWholeFile(path, "old", 3));
    REQUIRE(chmod(PathToSystem(path).c_str(), 0666) == 0);
  }
};

}  // namespace

TEST_CASE("a replaced file keeps its owner where that may be given, and is another file then") {
  if (!IsRoot()) return;
  const SharedFolder shared;
  REQUIRE(chown(PathToSystem(shared.path).c_str(), kOther, kOther) == 0);
  const ino_t before = FoundAt(shared.path).st_ino;
  CHECK(WriteDurableFile(shared.path, "new", 3));
  CHECK(FoundAt(shared.path).st_uid == kOther);
  CHECK(FoundAt(shared.path).st_gid == kOther);
  CHECK(FoundAt(shared.path).st_ino != before);
}

TEST_CASE("a file whose owner cannot be given is written in place, with nothing left beside it") {
  if (!IsRoot()) return;
  const SharedFolder shared;
  const ino_t before = FoundAt(shared.path).st_ino;
  {
    const AsOther other;
    CHECK(WriteDurableFile(shared.path, "newer", 5));
  }
  CHECK(FoundAt(shared.path).st_uid == 0);
  CHECK(FoundAt(shared.path).st_ino == before);
  CHECK(ReadContent(shared.path).bytes == std::vector<unsigned char>{'n', 'e', 'w', 'e', 'r'});
  for (const wchar_t* const suffix : kSideFileSuffixes) {
    CHECK(ReadContent(shared.path + suffix).failure == FileFailure::Missing);
  }
}

TEST_CASE("what an account without more rights left beside the file is not trusted") {
  if (!IsRoot()) return;
  const SharedFolder shared;
  const std::wstring beside = shared.path + L".new";
  REQUIRE(WriteWholeFile(beside, "planted", 7));
  CHECK(IsOwnSideFile(beside, shared.path));
  REQUIRE(chown(PathToSystem(beside).c_str(), kOther, kOther) == 0);
  CHECK_FALSE(IsOwnSideFile(beside, shared.path));
  // The owner of the file could have written the file itself.
  REQUIRE(chown(PathToSystem(shared.path).c_str(), kOther, kOther) == 0);
  CHECK(IsOwnSideFile(beside, shared.path));
  REQUIRE(RemoveFile(beside));
  REQUIRE(symlink(PathToSystem(shared.path).c_str(), PathToSystem(beside).c_str()) == 0);
  CHECK_FALSE(IsOwnSideFile(beside, shared.path));
}

TEST_CASE("a side file is never made over or through something that is there") {
  const SharedFolder shared;
  const std::wstring beside = shared.path + L".part";
  REQUIRE(symlink(PathToSystem(shared.path).c_str(), PathToSystem(beside).c_str()) == 0);
  CHECK_FALSE(CreateSideFile(beside, shared.path));
  CHECK(WriteDurableFile(shared.path, "new", 3));
  CHECK(S_ISREG(FoundAt(shared.path).st_mode));
  CHECK(ReadContent(shared.path).bytes == std::vector<unsigned char>{'n', 'e', 'w'});
}

}  // namespace dozewell
