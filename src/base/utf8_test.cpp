#include "base/utf8.h"

#include <doctest/doctest.h>

namespace dozewell {

TEST_CASE("UTF-8 becomes wide text and comes back") {
  struct Row {
    const char* utf8;
    std::wstring wide;
  };
  const Row rows[] = {
      {"", L""},
      {"zs7state.dat", L"zs7state.dat"},
      {"\x7F\xC2\x80\xDF\xBF", L"\u007F\u0080\u07FF"},
      {"\xE0\xA0\x80\xEF\xBF\xBF", L"\u0800\uFFFF"},
      {"\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", L"\U00010000\U0010FFFF"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.utf8);
    CHECK(WidenUtf8(row.utf8) == row.wide);
    CHECK(NarrowToUtf8(row.wide) == row.utf8);
  }
}

TEST_CASE("bytes that are not UTF-8 survive the way there and back") {
  const char* const kTexts[] = {"\x80",         "a\xFFz",           "\xC2",
                                "\xC0\x80",     "\xE0\x80\x80",     "\xED\xA0\x80",
                                "\xF0\x80\x80", "\xF4\x90\x80\x80", "\xE2\x82"};
  for (const char* text : kTexts) CHECK(NarrowToUtf8(WidenUtf8(text)) == text);
  const std::wstring escaped = WidenUtf8("\xFF");
  REQUIRE(escaped.size() == 1);
  CHECK(static_cast<unsigned>(escaped[0]) == 0xDCFF);
}

}  // namespace dozewell
