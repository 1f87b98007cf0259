#ifndef DOZEWELL_OPTIMIZER_BEST_SET_H_
#define DOZEWELL_OPTIMIZER_BEST_SET_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "prediction/configurations.h"
#include "settings/setting_names.h"

namespace dozewell {

// Stored in place of a best set where none beats the fixed timeout.
constexpr const char* kNoBestSet = "-1";

// The parameters of a best set, in the order of its text.
constexpr std::array kBestSetParameters = {kFirstLastWeightName,  kSecondLastWeightName,
                                           kAgregationWeightName, kStrengthHighName,
                                           kStrengthLowName,      kDayGroupingName};

// The name under which the best set of a scoring weight is stored: kBestSetPrefix and the weight's
// index, cut to nine characters.
std::string BestSetName(size_t index);

// A set's parameters joined by commas.
std::string BestSetText(IConfigurations& set);

// What becomes of the live settings when a stored text is the chosen one.
struct BestSetApplication {
  uint32_t disabled;  // kDisablePredictionName
  uint32_t feedback;  // kServiceFeedbackName
  // What to store under kBestSetParameters, unless nothing is.
  std::optional<std::array<int32_t, kBestSetParameters.size()>> parameters;
};

// Reads as the runtime's scanf reads six numbers with commas between them: white space may stand
// before a number, numbers keep their low 32 bits, and what follows the last one does not count.
BestSetApplication ReadBestSet(std::string_view text);

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_BEST_SET_H_
