#ifndef DOZEWELL_POWERWATCH_WATCH_LOG_H_
#define DOZEWELL_POWERWATCH_WATCH_LOG_H_

#include <cstdint>
#include <functional>
#include <string>

#include "powerwatch/watch_line.h"

namespace dozewell::powerwatch {

// The file of a watch never grows beyond this many bytes.
inline constexpr uint64_t kMostBytes = 50'000'000;

// The system's codes for no error, and for a file that would grow too large.
inline constexpr uint32_t kNoError = 0;
inline constexpr uint32_t kErrorFileTooLarge = 223;

// Writes controls as lines. Ends for good with the first line that cannot be written, so that what
// is in the file has no gaps. One thread at a time.
class WatchLog {
 public:
  // Puts a text at the end of the file, on the disk too when it returns; the system's error code.
  using Append = std::function<uint32_t(const std::string& text)>;

  // `size`: the bytes that the file has already.
  WatchLog(uint64_t size, Append append);

  // The line on which a watch begins, after the names of the columns in a new file, and else after
  // an empty line, which also ends a line that was not written to its end. Returns an error code.
  uint32_t Begin(const Reading& reading);

  // The line of a control. Returns an error code, the first one of this object.
  uint32_t Add(const ReceivedControl& received, const Reading& reading);

 private:
  uint32_t Write(const std::string& text);

  uint64_t size_;
  Append append_;
  uint32_t error_ = kNoError;
};

}  // namespace dozewell::powerwatch

#endif  // DOZEWELL_POWERWATCH_WATCH_LOG_H_
