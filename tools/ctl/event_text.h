#ifndef DOZEWELL_CTL_EVENT_TEXT_H_
#define DOZEWELL_CTL_EVENT_TEXT_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "common/json.h"

namespace dozewell::ctl {

// An event of the service.
struct ServiceEvent {
  std::optional<int64_t> utcSeconds;  // when it was logged; nothing if the log does not say
  uint32_t level;                     // the log's: 1 critical, 2 error, 3 warning, others are less
  std::string text;                   // UTF-8, without line feeds at its end

  bool operator==(const ServiceEvent&) const = default;
};

// Reads the XML that the event log makes of an event. Parts that are missing, or that follow XML
// that is not well formed, stay empty or 0; no text is refused.
ServiceEvent ParseEventXml(std::string_view xml);

// "2026-11-21 08:05:09  error        text", in this machine's local time and one line.
std::string EventLine(const ServiceEvent& event);

// The event as a JSON object.
Json EventJson(const ServiceEvent& event);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_EVENT_TEXT_H_
