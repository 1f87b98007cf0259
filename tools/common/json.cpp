#include "common/json.h"

#include "common/format_text.h"

namespace dozewell {

std::string JsonString(std::string_view text) {
  std::string json = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') {
      json += '\\';
      json += c;
    } else if (static_cast<unsigned char>(c) < ' ') {
      json += FormatText("\\u%04x", static_cast<unsigned int>(c));
    } else {
      json += c;
    }
  }
  return json + '"';
}

}  // namespace dozewell
