#ifndef DOZEWELL_COMMON_EMBEDDED_SETTINGS_H_
#define DOZEWELL_COMMON_EMBEDDED_SETTINGS_H_

#include <string>
#include <string_view>

namespace dozewell {

// A settings file inside a CSV history: each of its lines is a comment there.
std::string EmbedSettings(std::string_view settings);

// The settings file inside a CSV history; empty when it has none.
std::string EmbeddedSettings(std::string_view csv);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_EMBEDDED_SETTINGS_H_
