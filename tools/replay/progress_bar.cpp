#include "replay/progress_bar.h"

#include <cstddef>
#include <cstdio>
#include <string>

#include "common/write_text.h"

namespace dozewell::replay {
namespace {

constexpr uint64_t kWhole = 100;
constexpr uint64_t kPercentPerMark = 2;
constexpr size_t kMarks = kWhole / kPercentPerMark;
constexpr size_t kLineLength = sizeof("[] 100%") - 1 + kMarks;

}  // namespace

ProgressBar::ProgressBar(uint64_t steps, bool shown) : steps_(steps), shown_(shown) {
  if (shown_) Draw();
}

ProgressBar::~ProgressBar() {
  if (shown_) WriteText(stderr, '\r' + std::string(kLineLength, ' ') + '\r');
}

void ProgressBar::Step() {
  const uint64_t percent = ++done_ * kWhole / steps_;
  if (!shown_ || percent == percent_) return;
  percent_ = percent;
  Draw();
}

void ProgressBar::Draw() const {
  const size_t marks = percent_ / kPercentPerMark;
  WriteText(stderr, "\r[" + std::string(marks, '#') + std::string(kMarks - marks, ' ') + "] " +
                        std::to_string(percent_) + '%');
}

}  // namespace dozewell::replay
