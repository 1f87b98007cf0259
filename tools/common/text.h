#ifndef DOZEWELL_COMMON_TEXT_H_
#define DOZEWELL_COMMON_TEXT_H_

#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace dozewell {

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Without the blanks and tabs at both ends.
std::string_view TrimBlanks(std::string_view text);

// With a tab in place of each character that ends a line.
std::string InOneLine(std::string text);

// Compares without regard to the case of ASCII letters.
bool EqualIgnoringCase(std::string_view a, std::string_view b);

// "1 resume", "2 resumes".
std::string CountText(int64_t count, const char* singular, const char* plural);

// The lines of a text file, without the LF or CR LF that ends them and without a byte order mark.
std::vector<std::string_view> SplitLines(std::string_view text);

// The whole text as a number, by the rules of std::from_chars. Nothing when it is not a number or
// does not fit.
template <typename Number>
std::optional<Number> ParseNumber(std::string_view text) {
  Number number{};
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end) return std::nullopt;
  return number;
}

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_TEXT_H_
