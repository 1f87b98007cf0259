#include "common/json.h"

#include <doctest/doctest.h>

#include <limits>

namespace dozewell {

TEST_CASE("a JSON document is one line whose keys keep their order") {
  CHECK(JsonLine({{"z", 1}, {"a", {1, nullptr, true}}}) == "{\"z\":1,\"a\":[1,null,true]}\n");
  CHECK(JsonLine(Json::array()) == "[]\n");
}

TEST_CASE("a JSON text has only characters that no terminal takes for a command") {
  const auto line = [](const char* text) { return JsonLine(Json(text)); };
  CHECK(line("a/b 'c' \"d\\e\"") == "\"a/b 'c' \\\"d\\\\e\\\"\"\n");
  CHECK(line("a\n\x1b[2J\x7f") == "\"a\\n\\u001b[2J\\u007f\"\n");
  CHECK(line("\xC3\xBC") == "\"\\u00fc\"\n");
  CHECK(line("\xC2\x9B\xE2\x80\xAE") == "\"\\u009b\\u202e\"\n");
  CHECK(line("\xF0\x9F\x98\x80") == "\"\\ud83d\\ude00\"\n");
}

TEST_CASE("what is not UTF-8 is replaced in a JSON text") {
  // A byte of another encoding, a lone surrogate as it comes from UTF-16, and a cut character.
  CHECK(JsonLine(Json("a\xFC.csv")) == "\"a\\ufffd.csv\"\n");
  CHECK(JsonLine(Json("a\xED\xA0\x80z")) == "\"a\\ufffd\\ufffd\\ufffdz\"\n");
  CHECK(JsonLine(Json("\xE2\x82")) == "\"\\ufffd\"\n");
}

TEST_CASE("a JSON number is the one that people see") {
  CHECK(JsonLine(JsonNumber(0.1F)) == "0.100000001\n");
  CHECK(JsonLine(JsonNumber(0.333333343F)) == "0.333333343\n");
  // The same on all systems, to the last bit.
  CHECK(JsonNumber(57.1428604F) == 57.1428604);
  CHECK(JsonNumber(9.98058128F) == 9.98058128);
  CHECK(JsonLine(JsonNumber(-1.0F)) == "-1\n");
  CHECK(JsonLine(JsonNumber(-0.0F)) == "0\n");
  CHECK(JsonLine(JsonNumber(16777216.0F)) == "16777216\n");
  CHECK(JsonLine(JsonNumber(1e30F)) == "1.00000002e+30\n");
  CHECK(JsonLine(JsonNumber(0.53)) == "0.53\n");
}

TEST_CASE("what JSON has no number for is null") {
  CHECK(JsonNumber(std::numeric_limits<float>::quiet_NaN()).is_null());
  CHECK(JsonNumber(-std::numeric_limits<float>::infinity()).is_null());
  CHECK(JsonNumber(std::numeric_limits<double>::quiet_NaN()).is_null());
  CHECK(OptionalJson(std::optional<int>()).is_null());
  CHECK(OptionalJson(std::optional(7)) == 7);
}

}  // namespace dozewell
