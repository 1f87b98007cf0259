#ifndef DOZEWELL_CTL_METRICS_TEXT_H_
#define DOZEWELL_CTL_METRICS_TEXT_H_

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace dozewell::ctl {

// What stands for "never" among durations.
inline constexpr const char* kInfinity = "+Inf";

// A sample of a metric: its label, as name and value, and its number. A sample without a number is
// left out.
struct Sample {
  std::pair<std::string, std::string> label;
  std::optional<std::string> number;
};

// Metrics in the text format, version 0.0.4, that metric collectors read. All of them are gauges.
class MetricsText {
 public:
  // The metric's name has no prefix yet. `help` has no backslash and no line feed. Without a sample
  // that has a number, nothing is written.
  void Add(const std::string& name, const char* help, const std::vector<Sample>& samples);

  // A metric of one sample without a label.
  void Add(const std::string& name, const char* help, std::optional<int64_t> number);

  const std::string& Text() const { return text_; }

 private:
  std::string text_;
};

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_METRICS_TEXT_H_
