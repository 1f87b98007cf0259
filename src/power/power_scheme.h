#ifndef DOZEWELL_POWER_POWER_SCHEME_H_
#define DOZEWELL_POWER_POWER_SCHEME_H_

#include <array>
#include <cstdint>

namespace dozewell {

// The system's power schemes. Any thread; failures are silent.

// A GUID with the fields and the 16 bytes of the system's own.
struct Guid {
  uint32_t data1;
  uint16_t data2;
  uint16_t data3;
  std::array<uint8_t, 8> data4;

  bool operator==(const Guid&) const = default;
};
static_assert(sizeof(Guid) == 16);

// Which of a setting's two values counts.
inline constexpr uint32_t kPowerSourceAC = 0;
inline constexpr uint32_t kPowerSourceDC = 1;

// False, with `scheme` left alone, when the system names none.
bool GetActivePowerScheme(Guid& scheme);

// Makes a scheme the active one. For the scheme that is active already, this puts changed settings
// into effect.
bool SetActivePowerScheme(const Guid& scheme);

// The raw value of a scheme's setting for a source, kPowerSourceAC or kPowerSourceDC. A failed read
// leaves `value` alone.
bool ReadSchemeValue(uint32_t source, const Guid& scheme, const Guid& subgroup, const Guid& setting,
                     uint32_t& value);
bool WriteSchemeValue(uint32_t source, const Guid& scheme, const Guid& subgroup,
                      const Guid& setting, uint32_t value);

}  // namespace dozewell

#endif  // DOZEWELL_POWER_POWER_SCHEME_H_
