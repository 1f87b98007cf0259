#include "prediction/configurations.h"

#include <string_view>

#include "base/numbers.h"

namespace dozewell {

int32_t ReadPredictorNumber(IConfigurations& configuration, const char* key, int32_t missing) {
  const std::string value = configuration.GetValue(kPredictorSection, key);
  return value.empty() ? missing : Atoi(value);
}

std::vector<int32_t> ReadPredictorNumbers(IConfigurations& configuration, const char* key) {
  constexpr std::string_view kDelimiters = " ,";
  const std::string value = configuration.GetValue(kPredictorSection, key);
  std::vector<int32_t> numbers;
  std::string_view rest = value;
  for (;;) {
    const size_t start = rest.find_first_not_of(kDelimiters);
    if (start == std::string_view::npos) return numbers;
    rest.remove_prefix(start);
    const std::string_view token = rest.substr(0, rest.find_first_of(kDelimiters));
    numbers.push_back(Atoi(token));
    rest.remove_prefix(token.size());
  }
}

}  // namespace dozewell
