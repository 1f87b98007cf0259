#include "common/text.h"

#include <algorithm>
#include <cstddef>

namespace dozewell {
namespace {

constexpr char LowerCase(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

std::string_view TrimBlanks(std::string_view text) {
  constexpr std::string_view kBlanks = " \t";
  const size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string InOneLine(std::string text) {
  std::ranges::replace_if(
      text, [](char c) { return c >= '\n' && c <= '\r'; }, '\t');
  return text;
}

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return LowerCase(x) == LowerCase(y); });
}

std::string CountText(int64_t count, const char* singular, const char* plural) {
  return std::to_string(count) + " " + (count == 1 ? singular : plural);
}

std::vector<std::string_view> SplitLines(std::string_view text) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    lines.push_back(line);
  }
  return lines;
}

}  // namespace dozewell
