#ifndef DOZEWELL_COMMON_JSON_H_
#define DOZEWELL_COMMON_JSON_H_

#include <optional>
#include <string>
#include <string_view>

namespace dozewell {

// The text, in UTF-8, as a JSON string with its quotation marks.
std::string JsonString(std::string_view text);

inline std::string BoolJson(bool value) { return value ? "true" : "false"; }

// What `toJson` makes of a value; null where there is none.
template <typename Value, typename ToJson>
std::string OptionalJson(const std::optional<Value>& value, ToJson toJson) {
  return value ? toJson(*value) : "null";
}

// "[a,b]" of what `toJson` makes of each item.
template <typename Items, typename ToJson>
std::string JsonList(const Items& items, ToJson toJson) {
  std::string json = "[";
  for (const auto& item : items) {
    if (json.size() > 1) json += ',';
    json += toJson(item);
  }
  return json + ']';
}

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_JSON_H_
