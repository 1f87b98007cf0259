#include "base/file.h"

#include <doctest/doctest.h>

#include <stdexcept>

#include "support/temp_folder.h"

namespace dozewell {

TEST_CASE("a file comes back as it was written, and a shorter one replaces it") {
  const TempFolder folder;
  const std::wstring path = folder.File(L"data");
  const unsigned char bytes[] = {0, '\n', '\r', 26, 255};
  CHECK(WriteWholeFile(path, bytes, sizeof(bytes)));
  CHECK(ReadWholeFile(path) == std::vector<unsigned char>{0, '\n', '\r', 26, 255});
  CHECK(WriteWholeFile(path, bytes, 1));
  CHECK(ReadWholeFile(path) == std::vector<unsigned char>{0});
  CHECK(WriteWholeFile(path, nullptr, 0));
  CHECK(ReadWholeFile(path) == std::vector<unsigned char>{});
}

TEST_CASE("a missing file and a folder cannot be read, nor written in a missing folder") {
  const TempFolder folder;
  CHECK_FALSE(ReadWholeFile(folder.File(L"none")).has_value());
  CHECK_FALSE(ReadWholeFile(folder.Path()).has_value());
  CHECK_FALSE(WriteWholeFile(folder.File(L"none\\data"), "x", 1));
  CHECK_FALSE(WriteWholeFile(folder.Path(), "x", 1));
}

TEST_CASE("the size of an open file leaves its position") {
  const TempFolder folder;
  WriteWholeFile(folder.File(L"data"), "abc", 3);
  const File file = OpenFile(folder.File(L"data"), "rb");
  REQUIRE(file);
  CHECK(std::fgetc(file.get()) == 'a');
  CHECK(SizeOfFile(file.get()) == 3);
  CHECK(std::fgetc(file.get()) == 'b');
}

TEST_CASE("files are removed and replaced by name") {
  const TempFolder folder;
  WriteWholeFile(folder.File(L"old"), "old", 3);
  WriteWholeFile(folder.File(L"new"), "new", 3);
  CHECK(ReplaceFileWith(folder.File(L"old"), folder.File(L"new")));
  CHECK(ReadWholeFile(folder.File(L"old")) == std::vector<unsigned char>{'n', 'e', 'w'});
  CHECK_FALSE(ReplaceFileWith(folder.File(L"old"), folder.File(L"new")));
  CHECK(RemoveFile(folder.File(L"old")));
  CHECK_FALSE(RemoveFile(folder.File(L"old")));
  CHECK(folder.IsEmpty());
}

TEST_CASE("names beyond ASCII reach the system") {
  const TempFolder folder;
  const std::wstring path = folder.Path() + PathFromSystem("/\xC3\xA4\xE2\x82\xAC");
  CHECK(WriteWholeFile(path, "x", 1));
  CHECK(ReadWholeFile(path).has_value());
}

TEST_CASE("a path turns back into the system's name for it") {
  for (const char* name : {"/a/\xC3\xA4", "a b.xml", "C:/a"}) {
    CHECK(PathFromSystem(PathToSystem(PathFromSystem(name))) == PathFromSystem(name));
  }
  const TempFolder folder;
  CHECK(WriteWholeFile(PathFromSystem(PathToSystem(folder.File(L"x"))), "x", 1));
  CHECK(ReadWholeFile(folder.File(L"x")).has_value());
}

TEST_CASE("a folder and a name are joined by exactly one backslash") {
  CHECK(PathInFolder(L"C:\\Data", L"x") == L"C:\\Data\\x");
  CHECK(PathInFolder(L"C:\\Data\\", L"x") == L"C:\\Data\\x");
  CHECK_THROWS_WITH_AS(PathInFolder(L"", L"x"), "invalid string position", std::out_of_range);
}

}  // namespace dozewell
