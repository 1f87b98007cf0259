#include "powerwatch/watch_log.h"

#include <utility>

#include "common/powerwatch_format.h"

namespace dozewell::powerwatch {

WatchLog::WatchLog(uint64_t size, Append append) : size_(size), append_(std::move(append)) {}

uint32_t WatchLog::Begin(const Reading& reading) {
  const std::string before = size_ == 0 ? std::string(kPowerwatchHeader) : "";
  return Write(before + "\r\n" + WatchLine({kWatchBegins}, reading));
}

uint32_t WatchLog::Add(const ReceivedControl& received, const Reading& reading) {
  return Write(WatchLine(received, reading));
}

uint32_t WatchLog::Write(const std::string& text) {
  if (error_ != kNoError) return error_;
  error_ = size_ + text.size() > kMostBytes ? kErrorFileTooLarge : append_(text);
  size_ += text.size();
  return error_;
}

}  // namespace dozewell::powerwatch
