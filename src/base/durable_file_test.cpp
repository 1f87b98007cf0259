#include "base/durable_file.h"

#include <doctest/doctest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "support/temp_folder.h"

namespace dozewell {
namespace {

// A folder for one file, "f".
struct Folder {
  TempFolder folder;
  std::wstring path = folder.File(L"f");

  bool Write(const std::string& text) const {
    return WriteDurableFile(path, text.data(), text.size());
  }
  std::string Read() const { return TextOf(ReadDurableFile(path)); }

  // What stands under the file's own name with something behind it; "-" for nothing.
  std::string At(const wchar_t* suffix) const { return TextOf(ReadContent(path + suffix)); }
  void Put(const wchar_t* suffix, const std::string& text) const {
    REQUIRE(WriteWholeFile(path + suffix, text.data(), text.size()));
  }
  // A folder with something in it, which stands in a file's way.
  void PutFolder(const wchar_t* suffix) const {
    const std::filesystem::path name = PathToSystem(path + suffix);
    std::filesystem::create_directories(name / "inner");
  }
  bool HasOnlyTheFile() const { return RemoveFile(path) && folder.IsEmpty(); }

 private:
  static std::string TextOf(const FileContent& content) {
    return content.failure ? "-" : std::string(content.bytes.begin(), content.bytes.end());
  }
};

}  // namespace

TEST_CASE("a durable file is created and replaced, and nothing is left beside it") {
  const Folder folder;
  CHECK(folder.Read() == "-");
  CHECK(ReadDurableFile(folder.path).failure == FileFailure::Missing);
  for (const char* const text : {"new", "a longer one", "", "x"}) {
    CHECK(folder.Write(text));
    CHECK(folder.Read() == text);
    CHECK(folder.At(L"") == text);
    const File file = OpenDurableFile(folder.path);
    REQUIRE(file);
    CHECK(SizeOfFile(file.get()) == static_cast<int64_t>(std::string(text).size()));
  }
  CHECK(folder.HasOnlyTheFile());
}

TEST_CASE("a replaced file keeps its access rights") {
  const Folder folder;
  using std::filesystem::perms;
  const std::string name = PathToSystem(folder.path);
  for (const perms rights : {perms::owner_read | perms::owner_write,
                             perms::owner_read | perms::owner_write | perms::group_read}) {
    folder.Put(L"", "old");
    std::filesystem::permissions(name, rights);
    const perms before = std::filesystem::status(name).permissions();
    CHECK(folder.Write("new"));
    CHECK(std::filesystem::status(name).permissions() == before);
  }
}

TEST_CASE("complete content that waits beside the file counts, and gets into its place") {
  const Folder folder;
  folder.Put(L"", "torn");
  folder.Put(L".new", "whole");
  CHECK(folder.Read() == "whole");
  CHECK(folder.At(L"") == "torn");
  SUBCASE("at a start") { FinishWriting(folder.path); }
  SUBCASE("when it is read to be replaced") {
    const FileContent content = ReadBeforeWriting(folder.path);
    CHECK_FALSE(content.failure.has_value());
    CHECK(std::string(content.bytes.begin(), content.bytes.end()) == "whole");
  }
  CHECK(folder.At(L"") == "whole");
  CHECK(folder.HasOnlyTheFile());
}

TEST_CASE("complete content waits for a file that is gone, too") {
  const Folder folder;
  folder.Put(L".new", "whole");
  CHECK(folder.Read() == "whole");
  FinishWriting(folder.path);
  CHECK(folder.At(L"") == "whole");
  CHECK(folder.HasOnlyTheFile());
}

TEST_CASE("a write supersedes what waits, and what was never complete does not count") {
  const Folder folder;
  folder.Put(L"", "old");
  folder.Put(L".part", "half of it");
  CHECK(folder.Read() == "old");
  FinishWriting(folder.path);
  CHECK(folder.At(L"") == "old");
  folder.Put(L".new", "newer");
  CHECK(folder.Write("newest"));
  CHECK(folder.At(L"") == "newest");
  CHECK(folder.HasOnlyTheFile());
}

TEST_CASE("a file with a second name, or a folder, is not what was left beside the file") {
  for (const bool isFolder : {false, true}) {
    const Folder folder;
    folder.Put(L"", "old");
    if (isFolder) {
      folder.PutFolder(L".new");
    } else {
      folder.Put(L".other", "somebody's");
      std::filesystem::create_hard_link(PathToSystem(folder.path + L".other"),
                                        PathToSystem(folder.path + L".new"));
    }
    CHECK(folder.Read() == "old");
    FinishWriting(folder.path);
    CHECK(folder.At(L"") == "old");
    CHECK(folder.Write("new"));
    CHECK(folder.At(L"") == "new");
    CHECK(folder.At(L".other") == (isFolder ? "-" : "somebody's"));
    CHECK(folder.At(L".part") == "-");
  }
}

TEST_CASE("where nothing can be made beside the file it is written in place") {
  const Folder folder;
  folder.Put(L"", "old");
  folder.PutFolder(L".part");
  CHECK(folder.Write("new"));
  CHECK(folder.At(L"") == "new");
  CHECK(folder.At(L".new") == "-");
}

TEST_CASE("what waits is not written past") {
  const Folder folder;
  folder.Put(L"", "torn");
  folder.Put(L".new", "newer");
  folder.PutFolder(L".part");
  CHECK_FALSE(folder.Write("newest"));
  CHECK(folder.Read() == "newer");
  CHECK(folder.At(L"") == "torn");
}

TEST_CASE("a folder in the file's place is neither read, set aside nor written") {
  const Folder folder;
  folder.PutFolder(L"");
  CHECK(ReadBeforeWriting(folder.path).failure == FileFailure::Held);
  CHECK(folder.At(L".unread") == "-");
  CHECK_FALSE(folder.Write("new"));
  CHECK(std::filesystem::is_directory(PathToSystem(folder.path)));
}

TEST_CASE("nothing is written in a missing folder") {
  const Folder folder;
  const std::wstring path = folder.path + L"\\g";
  CHECK_FALSE(WriteDurableFile(path, "x", 1));
  CHECK(ReadBeforeWriting(path).failure == FileFailure::Missing);
  CHECK(folder.folder.IsEmpty());
}

TEST_CASE("a durable file is deleted with all that is beside it") {
  const Folder folder;
  for (const wchar_t* const suffix : {L"", L".part", L".new", L".unread"}) folder.Put(suffix, "x");
  RemoveDurableFile(folder.path);
  CHECK(folder.folder.IsEmpty());
  RemoveDurableFile(folder.path);
}

}  // namespace dozewell
