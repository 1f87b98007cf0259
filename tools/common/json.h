#ifndef DOZEWELL_COMMON_JSON_H_
#define DOZEWELL_COMMON_JSON_H_

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

namespace dozewell {

// What a command prints for programs. Keys keep the order in which they are written down.
using Json = nlohmann::ordered_json;

// The document in one line, with its line feed. Only ASCII characters are printed as they are, so
// that no text in it can steer a terminal; bytes that are not UTF-8 become U+FFFD.
std::string JsonLine(const Json& document);

// The number with the digits of FloatText, without a fraction when it is whole; null for
// not-a-number and infinity, which JSON lacks.
Json JsonNumber(float value);
Json JsonNumber(double value);

// The value, or null where there is none.
template <typename Value>
Json OptionalJson(const std::optional<Value>& value) {
  return value ? Json(*value) : Json();
}

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_JSON_H_
