#include "common/optimizer_inputs.h"

#include <limits>

#include "common/history_io.h"
#include "common/option_text.h"

namespace dozewell {

std::vector<HistoryRecord> LoadOptimizerHistory(const std::string& name,
                                                std::vector<std::string>& warnings) {
  return IncreasingRecords(LoadHistory(name, warnings).bytes);
}

int64_t HibernateAfterSeconds(const std::optional<std::string>& minutes) {
  constexpr int64_t kDefaultMinutes = 10;
  constexpr int64_t kSecondsPerMinute = 60;
  if (!minutes) return kDefaultMinutes * kSecondsPerMinute;
  return kSecondsPerMinute * ParseNumberOption<uint32_t>("--hibernate-after", *minutes, 0,
                                                         std::numeric_limits<uint32_t>::max());
}

}  // namespace dozewell
