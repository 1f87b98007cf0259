#include "ctl/event_text.h"

#include <cstddef>

#include "base/wall_clock.h"
#include "common/format_text.h"
#include "common/local_time.h"
#include "common/plain_text.h"
#include "common/text.h"
#include "ctl/local_time_text.h"
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

}  // namespace

ServiceEvent ParseEventXml(std::string_view xml) {
  ServiceEvent event = {};
  try {
    ReadEvent(XmlReader(xml, "the event"), event);
  } catch (const EventLogError&) {
    // What was read before the error is still shown.
  }
  while (event.text.ends_with('\n') || event.text.ends_with('\r')) event.text.pop_back();
  return event;
}

std::string EventLine(const ServiceEvent& event) {
  const auto time = LocalTimeText(event.utcSeconds);
  return FormatText("%-19s  %-11s  ", time ? WithBlank(*time).c_str() : "at an unknown time",
                    LevelName(event.level)) +
         PlainText(event.text, ' ') + "\n";
}

Json EventJson(const ServiceEvent& event) {
  return {{"time", OptionalJson(LocalTimeText(event.utcSeconds))},
          {"level", LevelName(event.level)},
          {"text", event.text},
          {"utcSeconds", OptionalJson(event.utcSeconds)}};
}

}  // namespace dozewell::ctl
