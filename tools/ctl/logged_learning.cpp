#include "ctl/logged_learning.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <string_view>
#include <utility>

#include "common/text.h"

namespace dozewell::ctl {
namespace {

// The controller logs its first event this soon after an attempt to start it.
constexpr int64_t kSlackSeconds = 60;

// "21/11/2026 8:5:9 - Suspend", which the controller logs before it does anything about it.
struct Posted {
  std::string_view name;
  tm time;
};

// Takes a number and the character behind it off the text.
std::optional<int32_t> TakeNumber(std::string_view& text, char end) {
  const size_t length = text.find(end);
  if (length == std::string_view::npos) return std::nullopt;
  const auto number = ParseNumber<int32_t>(text.substr(0, length));
  text.remove_prefix(length + 1);
  return number;
}

std::optional<Posted> ParsePosted(std::string_view text) {
  std::array<int32_t, 6> numbers;
  for (size_t i = 0; i < numbers.size(); ++i) {
    const auto number = TakeNumber(text, "// :: "[i]);
    if (!number) return std::nullopt;
    numbers[i] = *number;
  }
  const auto [day, month, year, hour, minute, second] = numbers;
  constexpr std::string_view kDash = "- ";
  tm time;
  if (!text.starts_with(kDash) ||
      !TmFromSeconds(SecondsFromTm({second, minute, hour, day, month - 1, year - 1900, 0, 0, 0}),
                     time)) {
    return std::nullopt;
  }
  return Posted{text.substr(kDash.size()), time};
}

// Follows the controller through its events.
class Reader {
 public:
  void Take(std::string_view text) {
    const std::optional<Posted> posted = ParsePosted(text);
    if (!posted) {
      TakeOther(text);
      return;
    }
    if (!learning_.begin) learning_.begin = posted->time;
    posted_ = posted;
    if (posted->name == "ResetHistory" && (state_ == "Active" || state_.empty())) Begin();
  }

  // A new process knows only what was saved.
  void Restart() {
    learning_.events.clear();
    state_ = "Uninitialized";
  }

  LoggedLearning Finish(bool isWhole) {
    learning_.isWhole = learning_.isWhole || isWhole;
    return std::move(learning_);
  }

 private:
  static constexpr std::array<std::string_view, 6> kStates = {
      "Uninitialized", "Active", "Spike_S3ToS4", "Spike_S4ToS3", "Suspended", "Off"};

  void TakeOther(std::string_view text) {
    // What the state does not expect is dropped.
    if (text.starts_with("State Machine Error")) posted_.reset();
    const auto* const state = std::ranges::find(kStates, text);
    if (state == kStates.end()) return;
    if (posted_) Learn(*posted_, *state);
    posted_.reset();
    state_ = *state;
  }

  void Learn(const Posted& posted, std::string_view next) {
    const auto learn = [&](TimeLineState event) {
      learning_.events.push_back({posted.time, event});
    };
    if (posted.name == "Activating" && next == "Active") {
      // Only a controller that has just been made takes it then.
      if (state_ == "Active" || state_ == "Off") Begin();
      learn(Activating);
    } else if (posted.name == "Suspend" && !state_.starts_with("Spike")) {
      learn(Suspend);
    } else if (posted.name == "ShuttingDown") {
      learn(ShuttingDown);
    }
  }

  // From here on the log has all that the controller learns.
  void Begin() {
    learning_.events.clear();
    learning_.isWhole = true;
  }

  LoggedLearning learning_;
  std::optional<Posted> posted_;  // the last event that has led to no new state yet
  std::string_view state_;        // empty while it is not known
};

}  // namespace

std::optional<std::vector<TimeLineEvent>> LoggedLearning::After(
    const std::optional<tm>& saved) const {
  const int64_t end = saved ? SecondsFromTm(*saved) : kInvalidTime;
  const bool goesBack = saved && begin && SecondsFromTm(*begin) <= end;
  if (!isWhole && !goesBack) return std::nullopt;
  std::vector<TimeLineEvent> after;
  std::ranges::copy_if(events, std::back_inserter(after), [end](const TimeLineEvent& event) {
    return SecondsFromTm(event.time) > end;
  });
  return after;
}

LoggedLearning ReadLearning(std::span<const ServiceEvent> events, int64_t startTime) {
  Reader reader;
  bool hasStarted = false;
  for (const ServiceEvent& event : events) {
    if (!hasStarted && event.utcSeconds && *event.utcSeconds >= startTime) {
      reader.Restart();
      hasStarted = true;
    }
    reader.Take(event.text);
  }
  const bool isWhole = !events.empty() && events.front().utcSeconds &&
                       *events.front().utcSeconds <= startTime + kSlackSeconds;
  return reader.Finish(isWhole);
}

}  // namespace dozewell::ctl
