#include "common/file_kind.h"

#include <doctest/doctest.h>

#include <cstring>
#include <string_view>
#include <vector>

#include "common/history_io.h"
#include "common/powerwatch_format.h"
#include "common/tool_error.h"
#include "prediction/tracker_data.h"

namespace dozewell {
namespace {

using Bytes = std::vector<unsigned char>;

Bytes BytesOf(std::string_view text) { return {text.begin(), text.end()}; }

Bytes BytesOf(const std::vector<HistoryRecord>& records) { return ToHistory("", records).bytes; }

Bytes DataFile(const TrackerData& header, size_t slots) {
  Bytes bytes(sizeof(header) + slots * sizeof(SlotRecord), 0xFF);
  std::memcpy(bytes.data(), &header, sizeof(header));
  return bytes;
}

TrackerData Header() {
  TrackerData header = {};
  header.daysInCycle = 7;
  header.minutesInDay = 1440;
  header.minutesPerSlot = 720;
  header.slotCount = 14;
  return header;
}

const std::vector<HistoryRecord> kThreeRecords = {{0, 0, 0}, {10, 1, 0}, {20, 3, 7}};

}  // namespace

TEST_CASE("text is known by having no zero byte at its beginning") {
  CHECK(IsText(BytesOf("1,0\n")));
  CHECK(
      IsText(BytesOf("\xEF\xBB\xBF"
                     "1,0\n")));
  CHECK(IsText(BytesOf(std::string(4096, 'x') + '\0')));
  CHECK(
      IsText(BytesOf(std::string_view("\xFF\xFE"
                                      "1\0",
                                      4))));
  CHECK(
      IsText(BytesOf(std::string_view("\xFE\xFF\0"
                                      "1",
                                      4))));
  CHECK_FALSE(IsText(BytesOf(std::string(4095, 'x') + '\0')));
  CHECK_FALSE(IsText(Bytes{}));
  CHECK_FALSE(IsText(BytesOf(kThreeRecords)));
}

TEST_CASE("a data file is known by its version, its shape and its size") {
  CHECK(IsDataFile(DataFile(Header(), 14)));
  CHECK_FALSE(IsDataFile(DataFile(Header(), 13)));
  const auto differs = [](auto change) {
    TrackerData header = Header();
    change(header);
    return !IsDataFile(DataFile(header, 14));
  };
  CHECK(differs([](TrackerData& header) { header.version = 1; }));
  CHECK(differs([](TrackerData& header) { header.daysInCycle = 0; }));
  CHECK(differs([](TrackerData& header) { header.minutesInDay = 0; }));
  CHECK(differs([](TrackerData& header) { header.minutesPerSlot = 0; }));
  CHECK(differs([](TrackerData& header) { header.slotCount = 15; }));
  TrackerData header = Header();
  header.slotCount = 0;
  CHECK_FALSE(IsDataFile(DataFile(header, 0)));
  CHECK_FALSE(IsDataFile(Bytes(63)));
}

TEST_CASE("what is needed is refused when it looks like something else") {
  const Bytes data = DataFile(Header(), 14);
  const Bytes history = BytesOf(kThreeRecords);
  const Bytes text = BytesOf("1,0\n");
  const Bytes utf16 =
      BytesOf(std::string_view("\xFF\xFE"
                               "1\0",
                               4));
  const auto refuses = [](auto require, const Bytes& content, const char* error) {
    CHECK_THROWS_WITH_AS(require("x", content), error, ToolError);
  };
  refuses(RequireHistory, text,
          "x: no history (zs7state.dat): it looks like text; the name of a CSV history ends in "
          ".csv");
  refuses(RequireHistory, data,
          "x: no history (zs7state.dat): it looks like a data file (cpredict.z7)");
  refuses(RequireDataFile, text, "x: no data file (cpredict.z7): it looks like text");
  refuses(RequireDataFile, utf16, "x: no data file (cpredict.z7): it looks like UTF-16 text");
  refuses(RequireDataFile, history,
          "x: no data file (cpredict.z7): it looks like a history (zs7state.dat)");
  refuses(RequireCsv, utf16, "x: no CSV history: it looks like UTF-16 text; it must be UTF-8");
  refuses(RequireCsv, data, "x: no CSV history: it looks like a data file (cpredict.z7)");
  refuses(RequireCsv, history, "x: no CSV history: it looks like a history (zs7state.dat)");
  CHECK_NOTHROW(RequireHistory("x", history));
  CHECK_NOTHROW(RequireDataFile("x", data));
  CHECK_NOTHROW(RequireCsv("x", text));
  for (const auto require : {RequireHistory, RequireDataFile, RequireCsv}) {
    CHECK_NOTHROW(require("x", Bytes{}));
  }
}

TEST_CASE("a file of the watch is no history, and the error says what reads it") {
  Bytes watched(kPowerwatchHeader.begin(), kPowerwatchHeader.end());
  CHECK_THROWS_WITH_AS(RequireCsv("x", watched),
                       "x: no CSV history: it looks like a file of dozewell-powerwatch; import "
                       "--from-event-log reads it",
                       ToolError);
  watched.pop_back();
  CHECK_NOTHROW(RequireCsv("x", watched));
}

TEST_CASE("only what is surely a history is no data file") {
  for (const std::vector<HistoryRecord>& records : {std::vector<HistoryRecord>{{0, 0, 0}},
                                                    {{0, 0, 0}, {0, 1, 0}},
                                                    {{-1, 0, 0}, {1, 1, 0}},
                                                    {{0, 0, 0}, {1, 4, 0}},
                                                    {{0, 0, 0}, {32535216000, 1, 0}}}) {
    CHECK_NOTHROW(RequireDataFile("x", BytesOf(records)));
  }
  Bytes longer = BytesOf(kThreeRecords);
  longer.push_back(0);
  CHECK_NOTHROW(RequireDataFile("x", longer));
  CHECK_THROWS_AS(RequireDataFile("x", BytesOf({{0, 0, 0}, {32535215999, 1, 0}})), ToolError);
}

}  // namespace dozewell
