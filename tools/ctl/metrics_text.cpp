#include "ctl/metrics_text.h"

#include <algorithm>

namespace dozewell::ctl {
namespace {

std::string Quoted(const std::string& text) {
  std::string quoted = "\"";
  for (const char character : text) {
    if (character == '\\' || character == '"') quoted += '\\';
    quoted += character == '\n' ? "\\n" : std::string(1, character);
  }
  return quoted + "\"";
}

}  // namespace

void MetricsText::Add(const std::string& name, const char* help,
                      const std::vector<Sample>& samples) {
  if (std::ranges::none_of(samples, [](const Sample& sample) { return sample.number.has_value(); }))
    return;
  const std::string fullName = "dozewell_" + name;
  text_ += "# HELP " + fullName + " " + help + "\n# TYPE " + fullName + " gauge\n";
  for (const Sample& sample : samples) {
    if (!sample.number) continue;
    const auto& [label, value] = sample.label;
    text_ += fullName;
    if (!label.empty())
      text_.append("{").append(label).append("=").append(Quoted(value)).append("}");
    text_.append(" ").append(*sample.number).append("\n");
  }
}

void MetricsText::Add(const std::string& name, const char* help, std::optional<int64_t> number) {
  if (number) Add(name, help, std::vector<Sample>{{{}, std::to_string(*number)}});
}

}  // namespace dozewell::ctl
