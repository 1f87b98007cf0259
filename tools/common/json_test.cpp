#include "common/json.h"

#include <doctest/doctest.h>

#include <vector>

namespace dozewell {

TEST_CASE("a JSON string escapes the characters that JSON does not allow") {
  CHECK(JsonString("") == "\"\"");
  CHECK(JsonString("a/b 'c'") == "\"a/b 'c'\"");
  CHECK(JsonString("say \"a\\b\"") == "\"say \\\"a\\\\b\\\"\"");
  CHECK(JsonString("a\n\t\x1f\x7f") == "\"a\\u000a\\u0009\\u001f\x7f\"");
  CHECK(JsonString("\xC3\xBC") == "\"\xC3\xBC\"");
}

TEST_CASE("a value that is missing is null in JSON") {
  const auto number = [](int item) { return std::to_string(item); };
  CHECK(OptionalJson(std::optional(7), number) == "7");
  CHECK(OptionalJson(std::optional<int>(), number) == "null");
  CHECK(BoolJson(true) == "true");
  CHECK(BoolJson(false) == "false");
}

TEST_CASE("a JSON list has commas between its items only") {
  const auto number = [](int item) { return std::to_string(item); };
  CHECK(JsonList(std::vector<int>{}, number) == "[]");
  CHECK(JsonList(std::vector<int>{1}, number) == "[1]");
  CHECK(JsonList(std::vector<int>{1, 2, 3}, number) == "[1,2,3]");
}

}  // namespace dozewell
