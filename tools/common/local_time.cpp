#include "common/local_time.h"

#include <cstddef>
#include <cstdint>

#include "common/format_text.h"
#include "common/text.h"

namespace dozewell {
namespace {

constexpr std::string_view kPattern = "0000-00-00T00:00:00";
constexpr size_t kSeparator = 10;
constexpr size_t kLengthWithoutSeconds = 16;

bool FitsPattern(std::string_view text) {
  if (text.size() != kPattern.size()) return false;
  for (size_t i = 0; i < text.size(); ++i) {
    if (IsDigit(kPattern[i]) ? !IsDigit(text[i]) : text[i] != kPattern[i]) return false;
  }
  return true;
}

int32_t Digits(std::string_view text) {
  int32_t number = 0;
  for (char c : text) number = number * 10 + (c - '0');
  return number;
}

}  // namespace

std::optional<tm> ParseLocalTime(std::string_view text) {
  if (!FitsPattern(text)) return std::nullopt;
  tm named = {};
  named.tm_year = Digits(text.substr(0, 4)) - 1900;
  named.tm_mon = Digits(text.substr(5, 2)) - 1;
  named.tm_mday = Digits(text.substr(8, 2));
  named.tm_hour = Digits(text.substr(11, 2));
  named.tm_min = Digits(text.substr(14, 2));
  named.tm_sec = Digits(text.substr(17, 2));
  tm real;
  if (!TmFromSeconds(SecondsFromTm(named), real)) return std::nullopt;
  // The 30th of February would have come back as another day.
  if (FormatLocalTime(real) != text) return std::nullopt;
  return real;
}

std::optional<tm> ParseLooseLocalTime(std::string_view text) {
  std::string strict(text);
  if (strict.size() > kSeparator && strict[kSeparator] == ' ') strict[kSeparator] = 'T';
  if (strict.size() == kLengthWithoutSeconds) strict += ":00";
  return ParseLocalTime(strict);
}

std::string FormatLocalTime(const tm& time) {
  return FormatText("%04d-%02d-%02dT%02d:%02d:%02d", time.tm_year + 1900, time.tm_mon + 1,
                    time.tm_mday, time.tm_hour, time.tm_min, time.tm_sec);
}

std::string WithBlank(std::string localTime) {
  if (localTime.size() > kSeparator) localTime[kSeparator] = ' ';
  return localTime;
}

}  // namespace dozewell
