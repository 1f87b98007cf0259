#ifndef DOZEWELL_POWERWATCH_WATCH_FILE_H_
#define DOZEWELL_POWERWATCH_WATCH_FILE_H_

#include <cstdint>
#include <string>

#include "base/system_handle.h"

namespace dozewell::powerwatch {

// The file that a watch writes to, which installing has made.
class WatchFile {
 public:
  // Opens it; `error` is then the system's code, 0 for success.
  WatchFile(const std::wstring& path, uint32_t& error);

  uint64_t Size() const { return size_; }  // when it was opened

  // Puts a text at its end, on the disk too when this returns. The system's error code.
  uint32_t Append(const std::string& text) const;

 private:
  SystemHandle file_;
  uint64_t size_ = 0;
};

}  // namespace dozewell::powerwatch

#endif  // DOZEWELL_POWERWATCH_WATCH_FILE_H_
