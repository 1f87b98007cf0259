#include "common/plain_text.h"

#include <doctest/doctest.h>

#include <string>

namespace dozewell {

TEST_CASE("a plain text has none of the characters that a terminal obeys") {
  CHECK(PlainText("a\nb\x1b[2J\x7f", '?') == "a?b?[2J?");
  CHECK(PlainText(std::string("a\0b", 3), ' ') == "a b");
  // The first and the last control of Latin-1.
  CHECK(PlainText("a\xC2\x80"
                  "b\xC2\x9F"
                  "c",
                  '?') == "a?b?c");
  CHECK(PlainText("\xD8\x9C", '?') == "?");
  CHECK(PlainText("\xE2\x80\x8E\xE2\x80\x8F", '?') == "??");
  CHECK(PlainText("\xE2\x80\xA8\xE2\x80\xA9\xE2\x80\xAA\xE2\x80\xAE", '?') == "????");
  CHECK(PlainText("\xE2\x81\xA6\xE2\x81\xA9", '?') == "??");
}

TEST_CASE("a plain text has no byte either that is a control character outside UTF-8") {
  CHECK(PlainText("a\x9B"
                  "2J",
                  '?') == "a?2J");
  CHECK(PlainText("\x80\x9F", '?') == "??");
}

TEST_CASE("all other characters stay in a plain text") {
  // The neighbours of those above, a byte of another encoding, and a character whose second half
  // in UTF-16 looks like an escaped byte.
  const std::string text =
      " ~\xC2\xA0\xC3\xBC\xE2\x80\x8D\xE2\x80\x90\xE2\x80\xA7\xE2\x80\xAF\xE2\x81\xA5\xE2\x81\xAA"
      "\xFC\xF0\x9F\x92\x80";
  CHECK(PlainText(text, '?') == text);
}

}  // namespace dozewell
