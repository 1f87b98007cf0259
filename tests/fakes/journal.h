#ifndef DOZEWELL_TESTS_FAKES_JOURNAL_H_
#define DOZEWELL_TESTS_FAKES_JOURNAL_H_

#include <utility>

#include "support/calls.h"

namespace dozewell::fakes {

// The calls of all fakes in one order, each as its fake notes it, behind "settings: ", "driver: ",
// "power: ", "thread: " or "service: "; of the event log "report <type> <text>", "clear" and "trace
// <text>". Predictor values, which are read by the dozen, are left out, and so is an event that
// found no source.
inline Calls journal;

// The calls since the journal was last taken.
inline Calls TakeJournal() { return std::exchange(journal, {}); }

}  // namespace dozewell::fakes

#endif  // DOZEWELL_TESTS_FAKES_JOURNAL_H_
