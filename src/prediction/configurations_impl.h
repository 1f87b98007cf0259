#ifndef DOZEWELL_PREDICTION_CONFIGURATIONS_IMPL_H_
#define DOZEWELL_PREDICTION_CONFIGURATIONS_IMPL_H_

#include <cstdint>
#include <string>
#include <vector>

#include "prediction/configurations.h"

namespace dozewell {

// The service's configuration, read afresh from the settings at each call. Reads may come from any
// thread; the listener is set, cleared and called under ControllerLock.
class ConfigurationsImpl : public IConfigurations {
 public:
  std::string GetValue(std::string section, std::string key) override;
  uint32_t GetTimeResolution() override;
  bool IsDynamicHAEnabled() override;
  std::wstring GetDataFolder() override;
  void RegisterListener(IConfigurationsListener* listener) override;
  void UnregisterListener() override;
  virtual ~ConfigurationsImpl() = default;

  // Calls the listener, if there is one. Its exceptions go to the caller.
  void NotifyListener(std::string section);

 private:
  IConfigurationsListener* listener_ = nullptr;
};

// ReadPredictorNumbers from the service's configuration.
std::vector<int32_t> ParseIntList(const char* key);

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_CONFIGURATIONS_IMPL_H_
