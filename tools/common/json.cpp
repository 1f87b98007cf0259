#include "common/json.h"

#include <cmath>
#include <cstdint>

#include "base/numbers.h"
#include "common/float_text.h"
#include "common/text.h"

namespace dozewell {

std::string JsonLine(const Json& document) {
  constexpr int kOneLine = -1;
  constexpr bool kOnlyAscii = true;
  return document.dump(kOneLine, ' ', kOnlyAscii, Json::error_handler_t::replace) + '\n';
}

Json JsonNumber(float value) {
  if (!std::isfinite(value)) return nullptr;
  return JsonNumber(ParseNumber<double>(FloatText(value)).value());
}

Json JsonNumber(double value) {
  if (!std::isfinite(value)) return nullptr;
  const int64_t whole = TruncateToInt64(value);
  if (static_cast<double>(whole) == value) return whole;
  return value;
}

}  // namespace dozewell
