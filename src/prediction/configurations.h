#ifndef DOZEWELL_PREDICTION_CONFIGURATIONS_H_
#define DOZEWELL_PREDICTION_CONFIGURATIONS_H_

#include <cstdint>
#include <string>
#include <vector>

#include "settings/setting_names.h"

namespace dozewell {

// Is told of changed parameters. There is one listener at a time; it is called on the thread that
// posted the change.
class IConfigurationsListener {
 public:
  virtual void OnConfigurationChanged(std::string section) = 0;

 protected:
  ~IConfigurationsListener() = default;
};

// Where the prediction engine reads its parameters from. No operation fails: absent values read as
// the empty text, kNoTimeResolution or false.
class IConfigurations {
 public:
  virtual std::string GetValue(std::string section, std::string key) = 0;
  // Minutes per time slot.
  virtual uint32_t GetTimeResolution() = 0;
  virtual bool IsDynamicHAEnabled() = 0;
  // The program's data folder, with or without a backslash at its end.
  virtual std::wstring GetDataFolder() = 0;
  // Sets the one listener, which is not owned, in place of any earlier one.
  virtual void RegisterListener(IConfigurationsListener* listener) = 0;
  virtual void UnregisterListener() = 0;

 protected:
  ~IConfigurations() = default;
};

// The number that a value of the predictor's section holds, or `missing` when it is absent.
int32_t ReadPredictorNumber(IConfigurations& configuration, const char* key, int32_t missing);

// The numbers that a value of the predictor's section holds, separated by blanks and commas. A
// token that is no number is 0; an absent value gives no numbers.
std::vector<int32_t> ReadPredictorNumbers(IConfigurations& configuration, const char* key);

}  // namespace dozewell

#endif  // DOZEWELL_PREDICTION_CONFIGURATIONS_H_
