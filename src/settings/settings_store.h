#ifndef DOZEWELL_SETTINGS_SETTINGS_STORE_H_
#define DOZEWELL_SETTINGS_SETTINGS_STORE_H_

#include <atomic>
#include <cstdint>

namespace dozewell {

// The settings and counters of this machine. A read looks in the Current key and then in the
// fallback keys Branding and Default; a write goes to Current only, creating it when missing.
//
// Every function may be called on any thread and answers false, silently, when there is nothing to
// read or the write failed. A read sets its out value only when it answers true, so callers put
// their default there first. A value's type is not looked at: data shorter than the number fills
// its low bytes and leaves the rest zero, longer data counts as absent.

// Whether the Branding key is still worth trying; cleared for good when it first fails to open.
inline std::atomic<bool> BrandingPresent{true};

// With `deleteAfterRead` the value is deleted from Current, whether or not it could be read there.
// False for a null or empty name.
bool ReadSetting(const wchar_t* name, uint32_t& value, bool deleteAfterRead);

// The value, or `valueIfAbsent`: ReadSetting without deleting.
inline uint32_t SettingOr(const wchar_t* name, uint32_t valueIfAbsent) {
  ReadSetting(name, valueIfAbsent, /*deleteAfterRead=*/false);
  return valueIfAbsent;
}

// Reads from the fallback keys alone. False for a null or empty name.
bool ReadDefaultSetting(const wchar_t* name, uint32_t& value);

// False, with nothing written, for a null or empty name.
bool WriteSetting(const wchar_t* name, uint32_t value);

// Seconds since 1970 (UTC): 64 bits in Current, 32 unsigned bits in the fallback keys.
bool ReadLastOptimizerRun(int64_t& value);
bool WriteLastOptimizerRun(int64_t value);

}  // namespace dozewell

#endif  // DOZEWELL_SETTINGS_SETTINGS_STORE_H_
