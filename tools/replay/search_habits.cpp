#include "replay/search_habits.h"

#include "settings/setting_names.h"

namespace dozewell::replay {

SearchHabits HabitsOf(const FileConfigurations& configuration) {
  return {configuration.ServiceNumber(kOptimizerIntervalName, kDefaultOptimizerIntervalDays),
          configuration.ServiceNumber(kOptimizerDelayName, kDefaultOptimizerDelayMinutes),
          configuration.ServiceNumber(kHistoryLimitName, kDefaultHistoryLimitDays)};
}

}  // namespace dozewell::replay
