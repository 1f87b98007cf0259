#ifndef DOZEWELL_POWER_POWER_CAPABILITIES_H_
#define DOZEWELL_POWER_POWER_CAPABILITIES_H_

#include <array>
#include <cstddef>
#include <cstdint>

namespace dozewell {

// The ways to sleep of a machine, as the system knows them from the hardware, the firmware and what
// an administrator has switched off. The bytes are the system's own structure, whose fields have
// different names in the headers of different compilers.
struct PowerCapabilities {
  // The system's number of hibernation among its states.
  static constexpr uint8_t kStateS4 = 5;

  static constexpr size_t kS1 = 3;
  static constexpr size_t kS2 = 4;
  static constexpr size_t kS3 = 5;
  static constexpr size_t kS4 = 6;
  static constexpr size_t kHibernationFile = 8;
  static constexpr size_t kFastStartup = 18;
  static constexpr size_t kWakeAlarm = 19;
  static constexpr size_t kModernStandby = 20;
  static constexpr size_t kTimerWake = 64;

  std::array<uint8_t, 76> bytes = {};

  bool HasS1() const { return bytes[kS1] != 0; }
  bool HasS2() const { return bytes[kS2] != 0; }
  // Sleep, with the memory kept under power.
  bool HasS3() const { return bytes[kS3] != 0; }
  // The hardware can hibernate, for which it also needs a hibernation file.
  bool HasS4() const { return bytes[kS4] != 0; }
  bool HasHibernationFile() const { return bytes[kHibernationFile] != 0; }
  // A shut-down could hibernate the system's own session. Whether it does is a setting.
  bool CanStartFast() const { return bytes[kFastStartup] != 0; }
  bool HasWakeAlarm() const { return bytes[kWakeAlarm] != 0; }
  // The machine goes idle in place of sleeping.
  bool HasModernStandby() const { return bytes[kModernStandby] != 0; }
  // A timer wakes the machine from hibernation too, and not only from sleep. The field is a number
  // of 32 bits, the deepest state that its clock wakes it from, and has only small values.
  bool HasTimerWakeFromS4() const { return bytes[kTimerWake] >= kStateS4; }
};

// False, with `capabilities` left alone, when the system does not tell. Any thread.
bool ReadPowerCapabilities(PowerCapabilities& capabilities);

}  // namespace dozewell

#endif  // DOZEWELL_POWER_POWER_CAPABILITIES_H_
