#ifndef DOZEWELL_CTL_REGISTRY_VALUE_H_
#define DOZEWELL_CTL_REGISTRY_VALUE_H_

#include <cstdint>
#include <optional>
#include <string>

namespace dozewell::ctl {

// Values of the system's own keys below HKEY_LOCAL_MACHINE. Nothing when a value is absent, may not
// be read or is of another type.

std::optional<uint32_t> ReadMachineNumber(const wchar_t* key, const wchar_t* name);

// In UTF-8, with the names of environment variables replaced where the value asks for that.
std::optional<std::string> ReadMachineText(const wchar_t* key, const wchar_t* name);

// How many bytes of data a value of any type has.
std::optional<uint32_t> ReadMachineValueSize(const wchar_t* key, const wchar_t* name);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_REGISTRY_VALUE_H_
