#ifndef DOZEWELL_SETUP_SYSTEM_ERROR_H_
#define DOZEWELL_SETUP_SYSTEM_ERROR_H_

#include <cstdint>
#include <stdexcept>
#include <string>

namespace dozewell::setup {

// A call of the system that failed, with the system's error code.
class SystemError : public std::runtime_error {
 public:
  SystemError(const std::string& what, uint32_t error)
      : std::runtime_error(what + " (error " + std::to_string(error) + ")") {}
};

}  // namespace dozewell::setup

#endif  // DOZEWELL_SETUP_SYSTEM_ERROR_H_
