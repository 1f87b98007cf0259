#ifndef DOZEWELL_SETTINGS_PREDICTOR_VALUES_H_
#define DOZEWELL_SETTINGS_PREDICTOR_VALUES_H_

#include <string>

namespace dozewell {

// The parameters of the predictors, as 8-bit text by section and name. Any thread; failures are
// silent.

// The text of a value, from the first of the keys Current, Branding and Default that has it; empty
// when none does. A REG_DWORD is given as signed decimal text of at most nine characters, a number
// that needs more as empty text. A value of another type is empty, too, and ends the search.
std::string ReadPredictorValue(const std::string& section, const std::string& name);

// Writes to the Current key, creating the section when missing. A value that is a REG_DWORD stays
// one and gets the number that the text begins with; a value that is neither that nor a REG_SZ is
// left alone. True when the value was written.
bool WritePredictorValue(const std::string& section, const std::string& name,
                         const std::string& text);

}  // namespace dozewell

#endif  // DOZEWELL_SETTINGS_PREDICTOR_VALUES_H_
