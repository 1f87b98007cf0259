#ifndef DOZEWELL_COMMON_PREDICTOR_KEYS_H_
#define DOZEWELL_COMMON_PREDICTOR_KEYS_H_

#include "settings/setting_names.h"

namespace dozewell {

// The values of the predictor's section, except for the results of searches, which are Best0,
// Best1 and so on, one for each scoring weight.
inline constexpr const char* kPredictorKeys[] = {
    kPredictorName,
    kWakeTimerName,
    kDaysInCycleName,
    kMinutesInDayName,
    kFirstLastWeightName,
    kSecondLastWeightName,
    kAgregationWeightName,
    kStrengthHighName,
    kStrengthLowName,
    kUseDualStrengthName,
    kDayGroupingName,
    kFirstLastWeightRangeName,
    kSecondLastWeightRangeName,
    kStrengthHighRangeName,
    kStrengthLowRangeName,
    kDayGroupingRangeName,
    kScoringWeightsName,
    kStrengthName,
};

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_PREDICTOR_KEYS_H_
