#ifndef DOZEWELL_COMMON_SAMPLE_HISTORY_H_
#define DOZEWELL_COMMON_SAMPLE_HISTORY_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "prediction/history_file.h"

namespace dozewell {

// A kind of machine for which histories can be made up.
struct SampleKind;

// The kind of this name: office, home, shift or erratic. Null for any other.
const SampleKind* FindSampleKind(std::string_view name);

// The names of all kinds, with commas between them.
std::string SampleKindNames();

// So that a sample ends well within the calendar.
constexpr int kMostSampleDays = 36500;

// A made-up history of `days` days, from a Monday on. Times increase strictly, and in use and
// asleep alternate. The same seed gives the same history on every system.
std::vector<HistoryRecord> MakeSampleHistory(const SampleKind& kind, int days, uint64_t seed);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_SAMPLE_HISTORY_H_
