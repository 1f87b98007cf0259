#include "common/json.h"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>

#include "base/numbers.h"
#include "common/float_text.h"
#include "common/text.h"

namespace dozewell {
namespace {

size_t Digits(double value) {
  char text[32];
  const auto end =
      std::to_chars(std::begin(text), std::end(text), value, std::chars_format::scientific).ptr;
  return static_cast<size_t>(end - text);
}

// The number with these few digits: some systems' reading of numbers is off by one unit in the last
// place.
double WithFewestDigits(double read) {
  double best = read;
  for (const double limit : {-HUGE_VAL, HUGE_VAL}) {
    const double beside = std::nextafter(read, limit);
    if (Digits(beside) < Digits(best)) best = beside;
  }
  return best;
}

}  // namespace

std::string JsonLine(const Json& document) {
  constexpr int kOneLine = -1;
  constexpr bool kOnlyAscii = true;
  return document.dump(kOneLine, ' ', kOnlyAscii, Json::error_handler_t::replace) + '\n';
}

Json JsonNumber(float value) {
  if (!std::isfinite(value)) return nullptr;
  return JsonNumber(WithFewestDigits(ParseNumber<double>(FloatText(value)).value()));
}

Json JsonNumber(double value) {
  if (!std::isfinite(value)) return nullptr;
  const int64_t whole = TruncateToInt64(value);
  if (static_cast<double>(whole) == value) return whole;
  return value;
}

}  // namespace dozewell
