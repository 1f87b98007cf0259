#include "common/output_file.h"

#include <doctest/doctest.h>

#include <filesystem>
#include <string_view>
#include <vector>

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

TEST_CASE("an output that is not committed leaves the file of its name as it was") {
  const TempFolder folder;
  PutFile(folder, L"out", "old");
  {
    OutputFile output(FileName(folder, L"out"));
    CHECK_FALSE(OpenFile(output.TemporaryPath(), "rb"));
    output.Prepare("new", 3);
    CHECK(ReadWholeFile(output.TemporaryPath()) == std::vector<unsigned char>{'n', 'e', 'w'});
    CHECK(Content(folder, L"out") == "old");
    CHECK(FileCount(folder) == 2);
  }
  CHECK(Content(folder, L"out") == "old");
  CHECK(FileCount(folder) == 1);
}

TEST_CASE("each output has a temporary name of its own, which fits into every folder") {
  const TempFolder folder;
  const OutputFile first(FileName(folder, L"out"));
  const OutputFile second(FileName(folder, L"out"));
  CHECK(first.TemporaryPath() != second.TemporaryPath());
  const size_t length = first.TemporaryPath().size() - folder.File(L"").size();
  CHECK(length == std::string_view("dozewell-0123456789abcdef0123.tmp").size());
}

TEST_CASE("a temporary name that is taken is neither written nor removed") {
  const TempFolder folder;
  PutFile(folder, L"out", "old");
  const std::string name = FileName(folder, L"out");
  {
    OutputFile output(name);
    REQUIRE(WriteWholeFile(output.TemporaryPath(), "someone else's", 14));
    CHECK_THROWS_AS(output.Write("new", 3), ToolError);
  }
  CHECK(Content(folder, L"out") == "old");
  CHECK(FileCount(folder) == 2);
}

TEST_CASE("an output in no folder cannot be written") {
  const TempFolder folder;
  const std::string name = FileName(folder, L"no\\out");
  const std::string error = name + ": cannot be written: No such file or directory";
  CHECK_THROWS_WITH_AS(OutputFile(name).Write("x", 1), error.c_str(), ToolError);
}

TEST_CASE("a folder is no output") {
  const TempFolder folder;
  const std::string name = FileName(folder, L"sub");
  std::filesystem::create_directory(name);
  CHECK_THROWS_WITH_AS(OutputFile{name}, (name + ": cannot be written: not a regular file").c_str(),
                       ToolError);
  CHECK(FileCount(folder) == 1);
}

TEST_CASE("what waits beside a replaced file of the service goes, what waits beside others stays") {
  const TempFolder folder;
  for (const wchar_t* const name : {L"zs7state.dat", L"cpredict.z7", L"other.dat"}) {
    for (const std::wstring suffix : {L"", L".new", L".part", L".unread"}) {
      PutFile(folder, (name + suffix).c_str(), "old");
    }
    OutputFile(FileName(folder, name)).Write("new", 3);
  }
  CHECK(FileCount(folder) == 2 + 2 + 4);
  CHECK(Content(folder, L"zs7state.dat.unread") == "old");
  CHECK(Content(folder, L"other.dat.new") == "old");
}

TEST_CASE("a file beside the service's that is not the service's own stays") {
  const TempFolder folder;
  PutFile(folder, L"mine", "mine");
  std::filesystem::create_hard_link(FileName(folder, L"mine"),
                                    FileName(folder, L"zs7state.dat.new"));
  OutputFile(FileName(folder, L"zs7state.dat")).Write("new", 3);
  CHECK(Content(folder, L"zs7state.dat.new") == "mine");
}

TEST_CASE("an output that is an input is refused under every name") {
  const TempFolder folder;
  PutFile(folder, L"in", "content");
  std::filesystem::create_hard_link(FileName(folder, L"in"), FileName(folder, L"second"));
  PutFile(folder, L"out", "content");
  const std::string in = FileName(folder, L"in");
  const auto refuses = [&](const std::string& output) {
    const std::string error = output + ": cannot be written: it is also --history";
    CHECK_THROWS_WITH_AS(RequireNoInput(output, {{"--data", std::nullopt}, {"--history", in}}),
                         error.c_str(), ToolError);
  };
  refuses(in);
  refuses(FileName(folder, L"second"));
  refuses(FileName(folder, L".\\in"));
  CHECK_NOTHROW(RequireNoInput(FileName(folder, L"out"), {{"--history", in}}));
  CHECK_NOTHROW(RequireNoInput(FileName(folder, L"none"), {{"--history", in}}));
}

TEST_CASE("an output is an input too when neither exists yet") {
  const TempFolder folder;
  const std::string none = FileName(folder, L"none");
  CHECK_THROWS_AS(RequireNoInput(FileName(folder, L".\\none"), {{"--history", none}}), ToolError);
  CHECK_NOTHROW(RequireNoInput(FileName(folder, L"no\\none"), {{"--history", none}}));
  CHECK_NOTHROW(RequireNoInput(FileName(folder, L"none2"), {{"--history", none}}));
}

TEST_CASE("what waits beside an input of the service is an input") {
  const TempFolder folder;
  PutFile(folder, L"zs7state.dat", "old");
  PutFile(folder, L"zs7state.dat.new", "new");
  CHECK_THROWS_AS(RequireNoInput(FileName(folder, L"zs7state.dat.new"),
                                 {{"--history", FileName(folder, L"zs7state.dat")}}),
                  ToolError);
}

}  // namespace dozewell
