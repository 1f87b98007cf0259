#ifndef DOZEWELL_COMMON_EXPLANATION_JSON_H_
#define DOZEWELL_COMMON_EXPLANATION_JSON_H_

#include "common/explanation.h"
#include "common/json.h"

namespace dozewell {

// The explanation as a JSON object.
Json ExplanationJson(const Explanation& explanation);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_EXPLANATION_JSON_H_
