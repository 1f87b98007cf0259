#include "ctl/event_text.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <iterator>

#include "base/wall_clock.h"
#include "common/json.h"
#include "common/local_time.h"
#include "common/text.h"
#include "common/utc_time.h"
#include "event_log/event_log_error.h"
#include "event_log/xml_reader.h"

namespace dozewell::ctl {
namespace {

constexpr size_t kSecondLength = 19;  // of YYYY-MM-DDTHH:MM:SS

std::optional<int64_t> ParseUtc(std::string_view text) {
  const auto utc = ParseLocalTime(text.substr(0, kSecondLength));
  return utc ? std::optional(SecondsFromTm(*utc)) : std::nullopt;
}

void ReadEvent(XmlReader reader, ServiceEvent& event) {
  std::string content;
  for (;;) {
    switch (reader.Next()) {
      case XmlReader::Piece::Start:
        content.clear();
        if (reader.Name() == "TimeCreated") {
          event.utcSeconds = ParseUtc(reader.Attribute("SystemTime"));
        }
        break;
      case XmlReader::Piece::Text:
        content += reader.Text();
        break;
      case XmlReader::Piece::End:
        if (reader.Name() == "Level") event.level = ParseNumber<uint32_t>(content).value_or(0);
        if (reader.Name() == "Data") {
          if (!event.text.empty()) event.text += ' ';
          event.text += content;
        }
        break;
      case XmlReader::Piece::Nothing:
        return;
    }
  }
}

const char* LevelName(uint32_t level) {
  switch (level) {
    case 1:
      return "critical";
    case 2:
      return "error";
    case 3:
      return "warning";
    default:
      return "information";
  }
}

std::optional<std::string> LocalTimeText(const std::optional<int64_t>& utcSeconds) {
  tm local;
  if (!utcSeconds || !LocalTimeFromUtc(*utcSeconds, local)) return std::nullopt;
  return FormatLocalTime(local);
}

}  // namespace

ServiceEvent ParseEventXml(std::string_view xml) {
  ServiceEvent event = {};
  try {
    ReadEvent(XmlReader(xml, "the event"), event);
  } catch (const EventLogError&) {
    // What came before is shown all the same.
  }
  while (event.text.ends_with('\n') || event.text.ends_with('\r')) event.text.pop_back();
  return event;
}

std::string EventLine(const ServiceEvent& event) {
  // As long as a time.
  std::string time = "at an unknown time ";
  if (const auto local = LocalTimeText(event.utcSeconds)) {
    time = *local;
    std::ranges::replace(time, 'T', ' ');
  }
  std::string text = event.text;
  std::ranges::replace_if(
      text, [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7f'; }, ' ');
  char level[16];
  std::snprintf(level, std::size(level), "%-11s", LevelName(event.level));
  return time + "  " + level + "  " + text + "\n";
}

std::string EventJson(const ServiceEvent& event) {
  const auto time = LocalTimeText(event.utcSeconds);
  return "{\"time\":" + (time ? JsonString(*time) : "null") +
         ",\"level\":" + JsonString(LevelName(event.level)) +
         ",\"text\":" + JsonString(event.text) + "}";
}

}  // namespace dozewell::ctl
