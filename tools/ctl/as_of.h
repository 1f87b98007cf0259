#ifndef DOZEWELL_CTL_AS_OF_H_
#define DOZEWELL_CTL_AS_OF_H_

#include <cstddef>
#include <optional>
#include <string>

#include "base/wall_clock.h"
#include "common/json.h"

namespace dozewell::ctl {

// How new what is known of the service's learning is.
struct AsOf {
  bool isNow;               // all that the running service has learnt is known
  std::optional<tm> saved;  // local time of the last event that it has saved
  size_t since;             // events that it has learnt since then
  std::string why;          // why only what was saved is known; empty when isNow
};

// Why events that the log no longer has are not known.
inline constexpr const char* kLogTooShort = "the event log does not go back that far";

// What a message ends with when nothing is known: "; what the service has learnt is not known,
// since the service does not answer".
std::string UnknownLearningText(const AsOf& asOf);

// One line: "As of the last save, 2026-02-02 08:00:00, since the service does not answer."
std::string AsOfText(const AsOf& asOf);
Json AsOfJson(const AsOf& asOf);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_AS_OF_H_
