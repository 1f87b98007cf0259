#include "common/text.h"

#include <doctest/doctest.h>

#include <cstdint>
#include <string>

namespace dozewell {

TEST_CASE("blanks and tabs are trimmed at both ends only") {
  CHECK(TrimBlanks(" \ta b\t ") == "a b");
  CHECK(TrimBlanks("a") == "a");
  CHECK(TrimBlanks(" \t ").empty());
  CHECK(TrimBlanks("").empty());
  CHECK(TrimBlanks("\va") == "\va");
}

TEST_CASE("only ASCII letters lose their case in a comparison") {
  CHECK(EqualIgnoringCase("DaysInCycle", "dAYSiNcYCLE"));
  CHECK(EqualIgnoringCase("", ""));
  CHECK_FALSE(EqualIgnoringCase("a", "ab"));
  CHECK_FALSE(EqualIgnoringCase("[", "{"));
  CHECK_FALSE(EqualIgnoringCase("\xC4", "\xE4"));
}

TEST_CASE("lines end in LF or CR LF, the last one also at the end of the file") {
  using Lines = std::vector<std::string_view>;
  CHECK(SplitLines("") == Lines{});
  CHECK(SplitLines("a\nb\r\nc") == Lines{"a", "b", "c"});
  CHECK(SplitLines("a\n") == Lines{"a"});
  CHECK(SplitLines("\n\r\n") == Lines{"", ""});
  CHECK(SplitLines("a\rb\n") == Lines{"a\rb"});
}

TEST_CASE("a byte order mark is not part of the first line") {
  CHECK(SplitLines("\xEF\xBB\xBF"
                   "a\n\xEF\xBB\xBF") == std::vector<std::string_view>{"a", "\xEF\xBB\xBF"});
}

TEST_CASE("a count has its word in the singular or the plural") {
  CHECK(CountText(1, "time", "times") == "1 time");
  CHECK(CountText(0, "time", "times") == "0 times");
  CHECK(CountText(2, "time", "times") == "2 times");
}

TEST_CASE("a number is the whole text and fits its type") {
  CHECK(ParseNumber<int32_t>("-42") == -42);
  CHECK(ParseNumber<uint32_t>("4294967295") == 4294967295U);
  CHECK(ParseNumber<double>("1.5e3") == 1500.0);
  CHECK_FALSE(ParseNumber<uint32_t>("4294967296"));
  CHECK_FALSE(ParseNumber<uint32_t>("-1"));
  CHECK_FALSE(ParseNumber<int32_t>(""));
  CHECK_FALSE(ParseNumber<int32_t>("+1"));
  CHECK_FALSE(ParseNumber<int32_t>(" 1"));
  CHECK_FALSE(ParseNumber<int32_t>("1 "));
  CHECK_FALSE(ParseNumber<int32_t>("1.0"));
  CHECK_FALSE(ParseNumber<double>("1e999"));
}

}  // namespace dozewell
