#ifndef DOZEWELL_REPLAY_SEARCH_HABITS_H_
#define DOZEWELL_REPLAY_SEARCH_HABITS_H_

#include "replay/file_configurations.h"
#include "walk/search_calendar.h"

namespace dozewell::replay {

// When a service with these settings searches.
SearchHabits HabitsOf(const FileConfigurations& configuration);

}  // namespace dozewell::replay

#endif  // DOZEWELL_REPLAY_SEARCH_HABITS_H_
