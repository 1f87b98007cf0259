#include "common/history_io.h"

#include <doctest/doctest.h>

#include <limits>
#include <string_view>
#include <vector>

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
  Put(folder, L"h.dat", std::string_view("\0twenty", 7));
  std::vector<std::string> warnings;
  const History csv = LoadHistory(FileName(folder, L"h.CSV"), warnings);
  REQUIRE(csv.bytes.size() == 2 * sizeof(HistoryRecord));
  const auto records = WholeRecords(csv.bytes);
  CHECK(records[0].time == 20);
  CHECK(records[1].time == 10.5);
  CHECK(csv.Place(1) == csv.name + ": line 3");

  const History dat = LoadHistory(FileName(folder, L"h.dat"), warnings);
  CHECK(AsText(dat.bytes) == std::string_view("\0twenty", 7));
  CHECK(dat.Place(2) == dat.name + ": record 3 at offset 32");
  CHECK(warnings ==
        std::vector<std::string>{csv.name + ": damaged: 1 record not later than one before",
                                 dat.name + ": damaged: an incomplete record at the end"});
  CHECK_THROWS_AS(LoadDatHistory(FileName(folder, L"h.CSV"), warnings), ToolError);
  Put(folder, L"text", "20,1\n");
  CHECK(LoadCsvHistory(FileName(folder, L"text"), warnings).bytes.size() == sizeof(HistoryRecord));
}

TEST_CASE("a history that is missing is an error unless it may be") {
  const TempFolder folder;
  const std::string name = FileName(folder, L"h.dat");
  std::vector<std::string> warnings;
  CHECK_THROWS_WITH_AS(LoadHistory(name, warnings),
                       (name + ": cannot be read: No such file or directory").c_str(), ToolError);
  CHECK_FALSE(LoadHistoryIfExists(name, warnings));
  Put(folder, L"h.dat", "");
  const auto empty = LoadHistoryIfExists(name, warnings);
  REQUIRE(empty);
  CHECK(empty->bytes.empty());
}

TEST_CASE("a history is written by its name") {
  const TempFolder folder;
  const std::string csv = FileName(folder, L"h.csv");
  const std::string dat = FileName(folder, L"h.dat");
  SaveHistory(csv, kRecords, {});
  SaveHistory(dat, kRecords, {});
  CHECK(Content(csv) == kCsv);
  const std::string_view bytes(reinterpret_cast<const char*>(kRecords), sizeof(kRecords));
  CHECK(Content(dat) == bytes);
  SaveCsvHistory(dat, kRecords, {});
  SaveDatHistory(csv, kRecords);
  CHECK(Content(dat) == kCsv);
  CHECK(Content(csv) == bytes);
}

TEST_CASE("a CSV history of a machine with a name says whose it is and until when") {
  const TempFolder folder;
  const std::string csv = FileName(folder, L"h.csv");
  const MachineIdentity identity = {.name = "OFFICE-7", .time = TimeOfLast(kRecords)};
  SaveHistory(csv, kRecords, {.name = "OFFICE-7"});
  CHECK(Content(csv) == IdentityComment(identity) + std::string(kCsv));
}

TEST_CASE("of the service's history the content that counts is read") {
  const TempFolder folder;
  const HistoryRecord records[] = {{10, 0, 0}, {20, 1, 0}};
  const auto put = [&](const wchar_t* name, size_t count) {
    REQUIRE(WriteWholeFile(folder.File(name), records, count * sizeof(HistoryRecord)));
  };
  put(L"ZS7state.dat", 1);
  put(L"ZS7state.dat.new", 2);
  put(L"h.dat", 1);
  put(L"h.dat.new", 2);
  std::vector<std::string> warnings;
  CHECK(LoadHistory(FileName(folder, L"ZS7state.dat"), warnings).bytes.size() == 32);
  CHECK(LoadHistory(FileName(folder, L"h.dat"), warnings).bytes.size() == 16);
}

TEST_CASE("what is wrong with a history is told in one warning") {
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  const auto damage = [](const std::vector<HistoryRecord>& records, size_t tail) {
    std::vector<unsigned char> bytes = ToHistory("h", records).bytes;
    bytes.resize(bytes.size() + tail);
    std::vector<std::string> warnings;
    DatHistory("h", bytes, warnings);
    return warnings;
  };
  using Lines = std::vector<std::string>;
  CHECK(damage({}, 0) == Lines{});
  CHECK(damage({{-5, 0, 9}, {5, 3, 9}}, 0) == Lines{});
  CHECK(damage({}, 15) == Lines{"h: damaged: an incomplete record at the end"});
  CHECK(damage({{5, 0, 0}, {5, 1, 0}}, 0) ==
        Lines{"h: damaged: 1 record not later than one before"});
  CHECK(damage({{kNan, 0, 0}}, 0) == Lines{"h: damaged: 1 record without a time"});
  CHECK(damage({{1, 4, 0}, {2, 5, 0}}, 1) ==
        Lines{"h: damaged: 2 records with a state above 3, an incomplete record at the end"});
  CHECK(damage({{1, 0, 0}, {kNan, 9, 0}, {0, 0, 0}}, 0) ==
        Lines{"h: damaged: 2 records not later than one before, 1 record without a time, 1 record "
              "with a state above 3"});
}

}  // namespace dozewell
