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

// What applying a best set came to, for kServiceFeedbackName. Settings clients interpret these
// values.
inline constexpr uint32_t kFeedbackNothingApplied = 0;
inline constexpr uint32_t kFeedbackApplied = 2;
inline constexpr uint32_t kFeedbackDisabled = 3;

// The parameters of a best set, in the order of its text.
constexpr std::array kBestSetParameters = {kFirstLastWeightName,  kSecondLastWeightName,
                                           kAgregationWeightName, kStrengthHighName,
                                           kStrengthLowName,      kDayGroupingName};

// The name under which the best set of the scoring weight `index` is stored: kBestSetPrefix and the
// index, cut to nine characters.
std::string BestSetName(size_t index);

// A set's parameters joined by commas.
std::string BestSetText(IConfigurations& set);

// What to write into the live settings when a stored text is chosen.
struct BestSetApplication {
  uint32_t disabled;  // kDisablePredictionName
  uint32_t feedback;  // kServiceFeedbackName
  // The values for kBestSetParameters; nothing when they stay as they are.
  std::optional<std::array<int32_t, kBestSetParameters.size()>> parameters;
};

// Reads six numbers with commas between them as the runtime's scanf does: white space may stand
// before a number, numbers keep their low 32 bits, and text after the last one is ignored.
BestSetApplication ReadBestSet(std::string_view text);

}  // namespace dozewell

#endif  // DOZEWELL_OPTIMIZER_BEST_SET_H_
