#include "common/machine_identity.h"

#include <doctest/doctest.h>

#include <vector>

#include "fakes/configurations_fake.h"

namespace dozewell {
namespace {

MachineIdentity Known() {
  return {"OFFICE-7", "1.2.3", "0123456789abcdef", "W. Europe Standard Time",
          tm{8, 5, 9, 21, 10, 126, 6, 324, 0}};
}

constexpr const char* kKnown =
    "{\"name\":\"OFFICE-7\",\"version\":\"1.2.3\",\"settings\":\"0123456789abcdef\","
    "\"zone\":\"W. Europe Standard Time\",\"time\":\"2026-11-21T09:05:08\"}";
constexpr const char* kUnknown =
    "{\"name\":null,\"version\":\"1.2.3\",\"settings\":null,\"zone\":null,\"time\":null}";

}  // namespace

TEST_CASE("a machine has one identity in every form") {
  const MachineIdentity unknown = {.version = "1.2.3"};
  CHECK(IdentifiedLine({{"records", 3}}, Known()) ==
        std::string("{\"records\":3,\"identity\":") + kKnown + "}\n");
  CHECK(IdentifiedLine({{"records", 3}}, unknown) ==
        std::string("{\"records\":3,\"identity\":") + kUnknown + "}\n");
  CHECK(IdentityComment(Known()) == std::string("# ") + kKnown + "\n");
  CHECK(IdentityComment(unknown).empty());
  CHECK(IdentityText(Known()) ==
        "OFFICE-7; zone W. Europe Standard Time; data to 2026-11-21 09:05:08; settings "
        "0123456789abcdef; version 1.2.3");
  CHECK(IdentityText(unknown) == "version 1.2.3");
  CHECK(MachineIdentity().version == kVersion);
}

TEST_CASE("a list says which machine it is about in its objects, if the machine has a name") {
  Json objects = Json::array();
  objects.push_back({{"a", 1}});
  objects.push_back({{"a", 2}});
  const std::string identity = std::string(",\"identity\":") + kKnown + "}";
  CHECK(IdentifiedLine(objects, Known()) ==
        "[{\"a\":1" + identity + ",{\"a\":2" + identity + "]\n");
  CHECK(IdentifiedLine(objects, {.version = "1.2.3"}) == "[{\"a\":1},{\"a\":2}]\n");
  CHECK(IdentifiedLine(Json::array({1, 2}), Known()) == "[1,2]\n");
  CHECK(IdentifiedLine(Json::array(), Known()) == "[]\n");
}

TEST_CASE("settings have the same mark wherever they were read, and others another") {
  fakes::Configurations one;
  const std::string mark = SettingsMark(one, false);
  CHECK(mark.size() == 16);
  CHECK(mark.find_first_not_of("0123456789abcdef") == std::string::npos);
  fakes::Configurations other;
  CHECK(SettingsMark(other, false) == mark);
  CHECK(SettingsMark(other, true) != mark);
  other.values[kStrengthName] = "3";
  const std::string stronger = SettingsMark(other, false);
  CHECK(stronger != mark);
  other.values[kStrengthName] = " 3\t";
  CHECK(SettingsMark(other, false) == stronger);
  other.values.erase(kStrengthName);
  other.timeResolution += 5;
  CHECK(SettingsMark(other, false) != mark);
}

TEST_CASE("the time of data is that of its last event") {
  const std::vector<HistoryRecord> records = {{100, 0, 0}, {3600.5, 1, 0}};
  CHECK(TimeOfLast(records) == tm{0, 0, 1, 1, 0, 70, 4, 0, 0});
  CHECK(TimeOfLast(std::vector<HistoryRecord>{}) == std::nullopt);
  CHECK(TimeOfLast(std::vector<HistoryRecord>{{1e300, 0, 0}}) == std::nullopt);
  TrackerData data = {};
  data.lastTime = {0, 0, 1, 1, 0, 70, 4, 0, 0};
  CHECK(TimeOfLast(data) == data.lastTime);
  data.lastTime.tm_year = kNone;
  CHECK(TimeOfLast(data) == std::nullopt);
}

}  // namespace dozewell
