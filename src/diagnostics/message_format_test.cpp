#include "diagnostics/message_format.h"

#include <doctest/doctest.h>

#include <string>

#include "base/utf8.h"

namespace dozewell {
namespace {

std::string Format(const std::wstring& format, uint32_t argument) {
  MessageBuffer message;
  message.fill(L'~');
  FormatMessageText(format.c_str(), argument, message);
  return NarrowToUtf8(message.data());
}

}  // namespace

TEST_CASE("the argument takes the place of the conversion") {
  struct Row {
    const wchar_t* format;
    uint32_t argument;
    const char* message;
  };
  const Row rows[] = {
      {L"", 5, ""},
      {L"no conversion\n", 5, "no conversion\n"},
      {L"%d", 0, "0"},
      {L"<%d>", 1060, "<1060>"},
      {L"%d", 0x7FFFFFFF, "2147483647"},
      {L"%d", 0x80000000, "-2147483648"},
      {L"%i", 0xFFFFFFFF, "-1"},
      {L"%ld", 0xFFFFFFFF, "-1"},
      {L"%li", 0xFFFFFFFF, "-1"},
      {L"%u", 0xFFFFFFFF, "4294967295"},
      {L"%lu\n", 0xFFFFFFFF, "4294967295\n"},
      {L"0x%x", 0x80004005, "0x80004005"},
      {L"%x", 0xABCDEF, "abcdef"},
      {L"%lx", 0xABCDEF, "abcdef"},
      {L"%X", 0x19ABCDEF, "19ABCDEF"},
      {L"%lX", 0, "0"},
  };
  for (const Row& row : rows) {
    CAPTURE(row.message);
    CHECK(Format(row.format, row.argument) == row.message);
  }
}

TEST_CASE("two percent signs make one") {
  CHECK(Format(L"%%", 5) == "%");
  CHECK(Format(L"%%d", 5) == "%d");
  CHECK(Format(L"%d%%", 5) == "5%");
  CHECK(Format(L"%%%d%%%%", 5) == "%5%%");
}

TEST_CASE("only the first conversion takes the argument") {
  CHECK(Format(L"%d %d", 5) == "5 %d");
  CHECK(Format(L"%x%lu%%%X", 10) == "a%lu%%X");
}

TEST_CASE("text that is no conversion is copied as it stands") {
  for (const wchar_t* text : {L"%", L"100% sure", L"%s", L"%ls", L"%l", L"%lld", L"%5d", L"%.3x",
                              L"%*d", L"%n", L"%p", L"%c", L"%f", L"% d", L"a%\n"}) {
    CHECK(Format(text, 5) == NarrowToUtf8(text));
  }
  CHECK(Format(L"%s is %d", 5) == "%s is 5");
  CHECK(Format(L"\u00E9 %d", 5) == "\xC3\xA9 5");
}

TEST_CASE("a message that does not fit is cut off") {
  CHECK(Format(std::wstring(1023, L'x'), 5) == std::string(1023, 'x'));
  CHECK(Format(std::wstring(1024, L'x'), 5) == std::string(1023, 'x'));
  CHECK(Format(std::wstring(5000, L'x'), 5) == std::string(1023, 'x'));
  CHECK(Format(std::wstring(1020, L'x') + L"%d", 12345) == std::string(1020, 'x') + "123");
}

}  // namespace dozewell
