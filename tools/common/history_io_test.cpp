#include "common/history_io.h"

#include <doctest/doctest.h>

#include <string_view>

#include "base/file.h"
#include "common/input_file.h"
#include "common/tool_error.h"
#include "support/file_name.h"

namespace dozewell {
namespace {

void Put(const TempFolder& folder, const wchar_t* name, std::string_view content) {
  REQUIRE(WriteWholeFile(folder.File(name), content.data(), content.size()));
}

std::string Content(const std::string& name) { return std::string(AsText(ReadInput(name))); }

constexpr HistoryRecord kRecords[] = {{20, 1, 5}, {10.5, 0, 0}};
constexpr std::string_view kCsv = "epoch_wallclock_seconds,asleep\n20,1\n10.5,0\n";

}  // namespace

TEST_CASE("CSV is known by its name") {
  CHECK(IsCsvName("a.csv"));
  CHECK(IsCsvName("a.b.CsV"));
  CHECK(IsCsvName(".csv"));
  CHECK_FALSE(IsCsvName("csv"));
  CHECK_FALSE(IsCsvName("a.csv.dat"));
  CHECK_FALSE(IsCsvName("a.csv "));
  CHECK_FALSE(IsCsvName(""));
}

TEST_CASE("a history is read by its name") {
  const TempFolder folder;
  Put(folder, L"h.CSV", "\n20,1\n10.5,0\n");
  Put(folder, L"h.dat", "20,1\n");
  const History csv = LoadHistory(FileName(folder, L"h.CSV"));
  REQUIRE(csv.bytes.size() == 2 * sizeof(HistoryRecord));
  const auto records = WholeRecords(csv.bytes);
  CHECK(records[0].time == 20);
  CHECK(records[1].time == 10.5);
  CHECK(csv.Place(1) == csv.name + ": line 3");

  const History dat = LoadHistory(FileName(folder, L"h.dat"));
  CHECK(AsText(dat.bytes) == "20,1\n");
  CHECK(dat.Place(2) == dat.name + ": record 3 at offset 32");
  CHECK(LoadDatHistory(FileName(folder, L"h.CSV")).bytes.size() == 13);
  CHECK(LoadCsvHistory(FileName(folder, L"h.dat")).bytes.size() == sizeof(HistoryRecord));
}

TEST_CASE("a history that is missing is an error unless it may be") {
  const TempFolder folder;
  const std::string name = FileName(folder, L"h.dat");
  CHECK_THROWS_WITH_AS(LoadHistory(name),
                       (name + ": cannot be read: No such file or directory").c_str(), ToolError);
  CHECK_FALSE(LoadHistoryIfExists(name));
  Put(folder, L"h.dat", "");
  const auto empty = LoadHistoryIfExists(name);
  REQUIRE(empty);
  CHECK(empty->bytes.empty());
}

TEST_CASE("a history is written by its name") {
  const TempFolder folder;
  const std::string csv = FileName(folder, L"h.csv");
  const std::string dat = FileName(folder, L"h.dat");
  SaveHistory(csv, kRecords);
  SaveHistory(dat, kRecords);
  CHECK(Content(csv) == kCsv);
  const std::string_view bytes(reinterpret_cast<const char*>(kRecords), sizeof(kRecords));
  CHECK(Content(dat) == bytes);
  SaveCsvHistory(dat, kRecords);
  SaveDatHistory(csv, kRecords);
  CHECK(Content(dat) == kCsv);
  CHECK(Content(csv) == bytes);
}

}  // namespace dozewell
