#ifndef DOZEWELL_COMMON_COUNTED_RECORDS_H_
#define DOZEWELL_COMMON_COUNTED_RECORDS_H_

#include <cstddef>
#include <vector>

#include "prediction/history_file.h"

namespace dozewell {

// A record that counts, with its place among all records of its history, from 0 on.
struct CountedRecord {
  HistoryRecord record;
  size_t position;
};

// The IncreasingRecords of a history file's content, with their places.
std::vector<CountedRecord> CountedRecords(const std::vector<unsigned char>& bytes);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_COUNTED_RECORDS_H_
