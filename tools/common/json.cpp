#include "common/json.h"

#include <cstdio>
#include <iterator>

namespace dozewell {

std::string JsonString(std::string_view text) {
  std::string json = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') {
      json += '\\';
      json += c;
    } else if (static_cast<unsigned char>(c) < ' ') {
      char escaped[8];
      std::snprintf(escaped, std::size(escaped), "\\u%04x", static_cast<unsigned int>(c));
      json += escaped;
    } else {
      json += c;
    }
  }
  return json + '"';
}

}  // namespace dozewell
