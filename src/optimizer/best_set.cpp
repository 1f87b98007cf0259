#include "optimizer/best_set.h"

#include <algorithm>

namespace dozewell {
namespace {

// Removes a number from the front of `text`.
std::optional<int32_t> TakeNumber(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  const std::string_view digits = text.substr(0, text.find_first_not_of("0123456789"));
  if (digits.empty()) return std::nullopt;
  text.remove_prefix(digits.size());
  uint32_t number = 0;
  for (const char digit : digits) number = number * 10 + static_cast<uint32_t>(digit - '0');
  return static_cast<int32_t>(negative ? 0 - number : number);
}

}  // namespace

std::string BestSetName(size_t index) {
  constexpr size_t kLongestName = 9;
  return (kBestSetPrefix + std::to_string(index)).substr(0, kLongestName);
}

std::string BestSetText(IConfigurations& set) {
  std::string text;
  for (const char* const parameter : kBestSetParameters) {
    if (parameter != kBestSetParameters.front()) text += ',';
    text += set.GetValue(kPredictorSection, parameter);
  }
  return text;
}

BestSetApplication ReadBestSet(std::string_view text) {
  if (text == kNoBestSet) return {1, kFeedbackDisabled, std::nullopt};
  std::array<int32_t, kBestSetParameters.size()> numbers = {};
  for (size_t i = 0; i < numbers.size(); ++i) {
    if (i > 0) {
      if (!text.starts_with(',')) return {0, kFeedbackNothingApplied, std::nullopt};
      text.remove_prefix(1);
    }
    const std::optional<int32_t> number = TakeNumber(text);
    if (!number) return {0, kFeedbackNothingApplied, std::nullopt};
    numbers[i] = *number;
  }
  return {0, kFeedbackApplied, numbers};
}

}  // namespace dozewell
