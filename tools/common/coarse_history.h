#ifndef DOZEWELL_COMMON_COARSE_HISTORY_H_
#define DOZEWELL_COMMON_COARSE_HISTORY_H_

#include <cstdint>
#include <span>
#include <vector>

#include "prediction/history_file.h"

namespace dozewell {

// A history of whole minutes, moved by so many weeks. Where the machine went to sleep and came
// back, or came back and went to sleep, within one minute, both records are left out, so that
// sleeps and uses alternate as before. Of records that say the same within one minute, the first
// stays. The records must be in order.
std::vector<HistoryRecord> CoarseHistory(std::span<const HistoryRecord> records, int64_t weeks);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_COARSE_HISTORY_H_
