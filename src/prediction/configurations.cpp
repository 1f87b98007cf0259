#include "prediction/configurations.h"

#include "base/numbers.h"

namespace dozewell {

int32_t ReadPredictorNumber(IConfigurations& configuration, const char* key, int32_t missing) {
  const std::string value = configuration.GetValue(kPredictorSection, key);
  return value.empty() ? missing : Atoi(value);
}

}  // namespace dozewell
