#include "common/embedded_settings.h"

#include "common/text.h"

namespace dozewell {
namespace {

// Other comments begin with "#" and something else.
constexpr std::string_view kMark = "#:";

}  // namespace

std::string EmbedSettings(std::string_view settings) {
  std::string csv;
  for (const std::string_view line : SplitLines(settings)) {
    csv.append(kMark).append(line.empty() ? "" : " ").append(line).append("\n");
  }
  return csv;
}

std::string EmbeddedSettings(std::string_view csv) {
  std::string settings;
  for (const std::string_view line : SplitLines(csv)) {
    if (line.starts_with(kMark)) settings.append(line.substr(kMark.size())).append("\n");
  }
  return settings;
}

}  // namespace dozewell
