#include "event_log/decoded_text.h"

#include <doctest/doctest.h>

#include <string>

namespace dozewell {
namespace {

std::string Bytes(std::initializer_list<int> bytes) { return {bytes.begin(), bytes.end()}; }

}  // namespace

TEST_CASE("UTF-16 of either byte order becomes UTF-8") {
  const std::string expected = "<\xC3\xBC\xF0\x9F\x92\xBB";
  CHECK(DecodeText(Bytes({0xFF, 0xFE, '<', 0, 0xFC, 0, 0x3D, 0xD8, 0xBB, 0xDC})) == expected);
  CHECK(DecodeText(Bytes({0xFE, 0xFF, 0, '<', 0, 0xFC, 0xD8, 0x3D, 0xDC, 0xBB})) == expected);
}

TEST_CASE("UTF-16 without a byte order mark is known by its first character") {
  CHECK(DecodeText(Bytes({'<', 0, 0xFC, 0})) == "<\xC3\xBC");
}

TEST_CASE("UTF-16 that is cut off loses half a character") {
  CHECK(DecodeText(Bytes({0xFF, 0xFE, '<', 0, 'E'})) == "<");
  CHECK(DecodeText(Bytes({0xFF, 0xFE})) == "");
}

TEST_CASE("any other text stays as it is but for its byte order mark") {
  CHECK(DecodeText("\xEF\xBB\xBF<\xC3\xBC") == "<\xC3\xBC");
  CHECK(DecodeText("<B\x81RO") == "<B\x81RO");
  CHECK(DecodeText("\xFF") == "\xFF");
  CHECK(DecodeText("") == "");
}

}  // namespace dozewell
