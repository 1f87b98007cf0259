#ifndef DOZEWELL_POWER_HIBERNATE_AFTER_H_
#define DOZEWELL_POWER_HIBERNATE_AFTER_H_

#include <cstdint>
#include <optional>

namespace dozewell {

// The hibernate-after timeout (HA) of the active power scheme, in minutes. Any thread. A
// timeout that cannot be set is reported to the event log, separately for AC and DC.

// The HA for a source (see power_scheme.h). False, with `minutes` left alone, when there is no
// active scheme or it could not be read; nothing is reported.
bool ReadHA(uint32_t source, uint32_t& minutes);

// The HA for the source that the machine runs on. Nothing, with nothing reported, when the source
// is not known or ReadHA fails.
std::optional<uint32_t> ReadCurrentHA();

// Sets the HA for both sources. 0 would mean never and is taken as 1; a negative value does
// nothing.
void SetPassedHA(int32_t minutes);

// Sets the user's own HA again for each source that has one cached. The cache is emptied first, so
// a value that cannot be set is lost.
void RestoreCachedHA();

}  // namespace dozewell

#endif  // DOZEWELL_POWER_HIBERNATE_AFTER_H_
