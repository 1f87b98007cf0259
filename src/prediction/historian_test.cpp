#include "prediction/historian.h"

#include <doctest/doctest.h>

#include <vector>

#include "support/local_times.h"

namespace dozewell {
namespace {

struct EventListener : ITimeLineListener {
  std::vector<int32_t> heard;

  void OnTimeLineEvent(const TimeLineEvent& event) override { heard.push_back(event.state); }
};

}  // namespace

TEST_CASE("the one listener receives each event at once until it is unregistered") {
  HistorianImpl historian;
  CHECK_NOTHROW(historian.NotifyListener({WeekTime(0), Activating}));
  EventListener first;
  EventListener second;
  historian.RegisterListener(&first);
  historian.RegisterListener(&second);
  CHECK(historian.HasListener());
  historian.NotifyListener({WeekTime(0), Suspend});
  CHECK(first.heard.empty());
  CHECK(second.heard == std::vector<int32_t>{Suspend});
  historian.UnregisterListener();
  CHECK_FALSE(historian.HasListener());
  historian.NotifyListener({WeekTime(0), Activating});
  CHECK(second.heard.size() == 1);
}

}  // namespace dozewell
