#ifndef DOZEWELL_COMMON_EXPLANATION_JSON_H_
#define DOZEWELL_COMMON_EXPLANATION_JSON_H_

#include <string>

#include "common/explanation.h"

namespace dozewell {

// The explanation as a JSON object in one line, with its line feed.
std::string ExplanationJson(const Explanation& explanation);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_EXPLANATION_JSON_H_
