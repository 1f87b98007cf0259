#include "common/output_file.h"

#include <doctest/doctest.h>

#include <filesystem>
#include <string_view>

#include "base/file.h"
#include "common/input_file.h"
#include "common/tool_error.h"
#include "support/file_name.h"

namespace dozewell {
namespace {

void PutFile(const TempFolder& folder, const wchar_t* name, std::string_view content) {
  REQUIRE(WriteWholeFile(folder.File(name), content.data(), content.size()));
}

std::string Content(const TempFolder& folder, const wchar_t* name) {
  return std::string(AsText(ReadInput(FileName(folder, name))));
}

size_t FileCount(const TempFolder& folder) {
  const std::filesystem::path path = FileName(folder, L".");
  const auto first = std::filesystem::directory_iterator(path);
  return static_cast<size_t>(std::distance(first, std::filesystem::directory_iterator()));
}

}  // namespace

TEST_CASE("an output takes the place of the file of its name") {
  const TempFolder folder;
  OutputFile(FileName(folder, L"out")).Write("first", 5);
  CHECK(Content(folder, L"out") == "first");
  OutputFile(FileName(folder, L"out")).Write("2", 1);
  CHECK(Content(folder, L"out") == "2");
  OutputFile(FileName(folder, L"out")).Write(nullptr, 0);
  CHECK(Content(folder, L"out").empty());
  CHECK(FileCount(folder) == 1);
}

TEST_CASE("an output that is not completed leaves the file of its name as it was") {
  const TempFolder folder;
  PutFile(folder, L"out", "old");
  {
    const OutputFile output(FileName(folder, L"out"));
    REQUIRE(WriteWholeFile(output.TemporaryPath(), "new", 3));
    CHECK(Content(folder, L"out") == "old");
    CHECK(FileCount(folder) == 2);
  }
  CHECK(Content(folder, L"out") == "old");
  CHECK(FileCount(folder) == 1);
}

TEST_CASE("an output that someone else wrote is put in place when it has its size") {
  const TempFolder folder;
  const std::string name = FileName(folder, L"out");
  PutFile(folder, L"out", "old");
  const std::string cannot = name + ": cannot be written";
  {
    OutputFile output(name);
    // Nothing is there, as after a writer that gave up.
    CHECK_THROWS_WITH_AS(output.Commit(3), cannot.c_str(), ToolError);
    REQUIRE(WriteWholeFile(output.TemporaryPath(), "ne", 2));
    CHECK_THROWS_WITH_AS(output.Commit(3), cannot.c_str(), ToolError);
    CHECK(Content(folder, L"out") == "old");
    REQUIRE(WriteWholeFile(output.TemporaryPath(), "new", 3));
    output.Commit(3);
  }
  CHECK(Content(folder, L"out") == "new");
  CHECK(FileCount(folder) == 1);
}

TEST_CASE("a temporary name that is taken is left alone") {
  const TempFolder folder;
  PutFile(folder, L"out.0.tmp", "someone else's");
  OutputFile(FileName(folder, L"out")).Write("new", 3);
  CHECK(Content(folder, L"out") == "new");
  CHECK(Content(folder, L"out.0.tmp") == "someone else's");
  CHECK(FileCount(folder) == 2);
}

TEST_CASE("an output in no folder cannot be written") {
  const TempFolder folder;
  const std::string name = FileName(folder, L"no\\out");
  const std::string error = name + ": cannot be written: No such file or directory";
  CHECK_THROWS_WITH_AS(OutputFile(name).Write("x", 1), error.c_str(), ToolError);
  CHECK_THROWS_WITH_AS(OutputFile(name).Commit(1), error.c_str(), ToolError);
}

TEST_CASE("a folder is no output") {
  const TempFolder folder;
  const std::string name = FileName(folder, L"sub");
  std::filesystem::create_directory(name);
  CHECK_THROWS_WITH_AS(OutputFile{name}, (name + ": cannot be written: not a regular file").c_str(),
                       ToolError);
  CHECK(FileCount(folder) == 1);
}

}  // namespace dozewell
