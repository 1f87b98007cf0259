#ifndef DOZEWELL_TESTS_SUPPORT_TEXT_PARTS_H_
#define DOZEWELL_TESTS_SUPPORT_TEXT_PARTS_H_

#include <cstddef>
#include <string>
#include <string_view>

namespace dozewell {

// How often a part occurs in a text.
inline size_t CountOf(std::string_view part, std::string_view text) {
  size_t count = 0;
  for (size_t at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

inline bool Contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

// The text between the first `from` and the next `to`.
inline std::string Between(std::string_view text, std::string_view from, std::string_view to) {
  const size_t start = text.find(from) + from.size();
  return std::string(text.substr(start, text.find(to, start) - start));
}

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_SUPPORT_TEXT_PARTS_H_
