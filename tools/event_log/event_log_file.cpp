#include "event_log/event_log_file.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <utility>

#include "common/local_time.h"
#include "common/text.h"
#include "event_log/decoded_text.h"
#include "event_log/event_log_error.h"
#include "event_log/xml_reader.h"

namespace dozewell {
namespace {

constexpr std::string_view kKernelPower = "Microsoft-Windows-Kernel-Power";
constexpr std::string_view kKernelGeneral = "Microsoft-Windows-Kernel-General";
constexpr std::string_view kPowerTroubleshooter = "Microsoft-Windows-Power-Troubleshooter";
constexpr std::string_view kEventLog = "EventLog";

struct KnownEvent {
  std::string_view provider;
  uint32_t id;
  LogEventKind kind;
};
constexpr KnownEvent kKnownEvents[] = {
    {kKernelGeneral, 1, LogEventKind::ClockSet},   {kKernelGeneral, 12, LogEventKind::Started},
    {kKernelGeneral, 13, LogEventKind::Stopped},   {kKernelPower, 42, LogEventKind::Slept},
    {kKernelPower, 107, LogEventKind::Woke},       {kKernelPower, 109, LogEventKind::Stopped},
    {kKernelPower, 506, LogEventKind::Slept},      {kKernelPower, 507, LogEventKind::Woke},
    {kPowerTroubleshooter, 1, LogEventKind::Woke}, {kEventLog, 6005, LogEventKind::LogStarted},
    {kEventLog, 6006, LogEventKind::Stopped},      {kEventLog, 6008, LogEventKind::UncleanStart},
};

LogEventKind KindOf(std::string_view provider, uint32_t id) {
  const auto* const found = std::ranges::find_if(kKnownEvents, [&](const KnownEvent& known) {
    return known.id == id && known.provider == provider;
  });
  return found == std::end(kKnownEvents) ? LogEventKind::Other : found->kind;
}

// An event as its XML has it.
struct RawEvent {
  std::string provider;
  std::string id;
  std::string record;
  std::string time;
  std::vector<std::pair<std::string, std::string>> data;  // names and values
  std::string binary;

  std::string_view Data(std::string_view name) const {
    const auto found = std::ranges::find(
        data, name, [](const auto& item) { return std::string_view(item.first); });
    return found == data.end() ? std::string_view() : found->second;
  }
};

// "2026-11-21T08:05:09.1234567Z", whose fraction may be missing.
std::optional<int64_t> ParseUtc(std::string_view text) {
  constexpr size_t kSecondLength = 19;
  if (!text.ends_with('Z')) return std::nullopt;
  const auto utc = ParseLocalTime(text.substr(0, kSecondLength));
  return utc ? std::optional(SecondsFromTm(*utc)) : std::nullopt;
}

WakeCause WakeCauseOf(const RawEvent& raw) {
  // A wake by a timer names the program that set it. Of the other types, only these two
  // are sure to mean a device.
  if (!raw.Data("WakeTimerOwner").empty() || !raw.Data("WakeTimerContext").empty()) {
    return WakeCause::Timer;
  }
  constexpr std::string_view kPowerButton = "1";
  constexpr std::string_view kDevice = "5";
  const std::string_view type = raw.Data("WakeSourceType");
  return type == kPowerButton || type == kDevice ? WakeCause::Device : WakeCause::Unknown;
}

// The last known time of an unclean start, in UTC: the second of two SYSTEMTIMEs in hexadecimal.
std::optional<int64_t> ParseAliveTime(std::string_view binary) {
  constexpr size_t kSystemTimeDigits = 32;
  constexpr size_t kWordDigits = 4;
  if (binary.size() < 2 * kSystemTimeDigits) return std::nullopt;
  std::array<int32_t, 7> words = {};  // year, month, week day, day, hour, minute, second
  for (size_t i = 0; i < words.size(); ++i) {
    const std::string_view digits = binary.substr(kSystemTimeDigits + i * kWordDigits, kWordDigits);
    uint32_t word = 0;
    const char* const end = digits.data() + digits.size();
    if (std::from_chars(digits.data(), end, word, 16).ptr != end) return std::nullopt;
    words[i] = static_cast<int32_t>(word >> 8 | (word & 0xFF) << 8);
  }
  tm time = {};
  time.tm_year = words[0] - 1900;
  time.tm_mon = words[1] - 1;
  time.tm_mday = words[3];
  time.tm_hour = words[4];
  time.tm_min = words[5];
  time.tm_sec = words[6];
  const int64_t seconds = SecondsFromTm(time);
  return seconds == kInvalidTime ? std::nullopt : std::optional(seconds);
}

LogEvent Interpret(const RawEvent& raw, const XmlReader& xml) {
  LogEvent event;
  const auto time = ParseUtc(raw.time);
  if (!time) xml.Fail("the event that ends here has no time that could be read");
  event.time = *time;
  event.record = ParseNumber<uint64_t>(TrimBlanks(raw.record)).value_or(0);
  event.kind = KindOf(raw.provider, ParseNumber<uint32_t>(TrimBlanks(raw.id)).value_or(0));
  switch (event.kind) {
    case LogEventKind::Woke:
      event.cause = WakeCauseOf(raw);
      event.sleepTime = ParseUtc(raw.Data("SleepTime"));
      event.wakeTime = ParseUtc(raw.Data("WakeTime"));
      break;
    case LogEventKind::UncleanStart:
      event.aliveTime = ParseAliveTime(raw.binary);
      break;
    case LogEventKind::ClockSet:
      event.oldTime = ParseUtc(raw.Data("OldTime"));
      event.newTime = ParseUtc(raw.Data("NewTime"));
      break;
    default:
      break;
  }
  return event;
}

// Where the text of the current element belongs; null for an element that is not needed.
std::string* TakeElement(const XmlReader& xml, std::string_view section, RawEvent& raw) {
  const std::string_view name = xml.Name();
  if (section == "System") {
    if (name == "Provider") raw.provider = xml.Attribute("Name");
    if (name == "TimeCreated") raw.time = xml.Attribute("SystemTime");
    if (name == "EventID") return &raw.id;
    if (name == "EventRecordID") return &raw.record;
  } else if (section == "EventData") {
    if (name == "Binary") return &raw.binary;
    if (name == "Data") return &raw.data.emplace_back(xml.Attribute("Name"), "").second;
  }
  return nullptr;
}

// Reads on from the start of an <Event> to its end.
LogEvent ReadEvent(XmlReader& xml) {
  const size_t depth = xml.Depth();
  RawEvent raw;
  std::string section;
  std::string* text = nullptr;
  for (;;) {
    const XmlReader::Piece piece = xml.Next();
    if (piece == XmlReader::Piece::Text) {
      if (text != nullptr) *text += xml.Text();
      continue;
    }
    text = nullptr;
    if (piece == XmlReader::Piece::End && xml.Depth() == depth) return Interpret(raw, xml);
    if (piece != XmlReader::Piece::Start) continue;
    if (xml.Depth() == depth + 1) section = xml.Name();
    if (xml.Depth() == depth + 2) text = TakeElement(xml, section, raw);
  }
}

}  // namespace

std::vector<LogEvent> ParseEventLog(std::string_view file, const std::string& name) {
  if (file.starts_with("ElfFile")) {
    throw EventLogError(name + ": an event log itself, no export of one; wevtutil qe " + name +
                        " /lf:true /f:xml exports it");
  }
  const std::string text = DecodeText(file);
  XmlReader xml(text, name);
  std::vector<LogEvent> events;
  for (;;) {
    const XmlReader::Piece piece = xml.Next();
    if (piece == XmlReader::Piece::Nothing) return events;
    if (piece == XmlReader::Piece::Text &&
        xml.Text().find_first_not_of(" \t\r\n") != std::string::npos) {
      xml.Fail("text where an event should be");
    }
    if (piece != XmlReader::Piece::Start) continue;
    if (xml.Name() == "Event") {
      events.push_back(ReadEvent(xml));
    } else if (xml.Depth() > 1) {
      xml.Fail("<" + std::string(xml.Name()) + "> where an <Event> should be");
    }
  }
}

}  // namespace dozewell
