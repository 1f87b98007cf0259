#include "ctl/event_text.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdio>
#include <iterator>
#include <system_error>

#include "base/utf8.h"
#include "base/wall_clock.h"
#include "common/json.h"
#include "common/local_time.h"
#include "common/text.h"
#include "common/utc_time.h"

namespace dozewell::ctl {
namespace {

constexpr size_t kSecondLength = 19;  // of YYYY-MM-DDTHH:MM:SS

// A piece of XML: an element's attributes, as they stand, and its content.
struct Element {
  std::string_view attributes;
  std::string_view content;
};

// Takes the next element of this name, which holds none of the same name, from the text.
std::optional<Element> TakeElement(std::string_view& xml, std::string_view name) {
  const std::string opening = "<" + std::string(name);
  const std::string closing = "</" + std::string(name) + ">";
  for (size_t at = xml.find(opening); at != std::string_view::npos;
       at = xml.find(opening, at + 1)) {
    const size_t afterName = at + opening.size();
    const size_t end = xml.find('>', afterName);
    if (end == std::string_view::npos) break;
    std::string_view attributes = xml.substr(afterName, end - afterName);
    // <Data and not <DataItem.
    if (!attributes.empty() && attributes.front() != ' ' && attributes.front() != '/') continue;
    if (attributes.ends_with('/')) {
      attributes.remove_suffix(1);
      xml.remove_prefix(end + 1);
      return Element{attributes, {}};
    }
    const size_t close = xml.find(closing, end);
    if (close == std::string_view::npos) break;
    const Element element = {attributes, xml.substr(end + 1, close - end - 1)};
    xml.remove_prefix(close + closing.size());
    return element;
  }
  return std::nullopt;
}

std::optional<Element> FindElement(std::string_view xml, std::string_view name) {
  return TakeElement(xml, name);
}

std::string_view Attribute(const Element& element, std::string_view name) {
  const std::string opening = " " + std::string(name) + "=";
  const size_t at = element.attributes.find(opening);
  if (at == std::string_view::npos) return {};
  std::string_view value = element.attributes.substr(at + opening.size());
  if (value.empty()) return {};
  const char quote = value.front();
  value.remove_prefix(1);
  return value.substr(0, value.find(quote));
}

// The character that "amp" or "#x41" stands for; nothing for a name that XML does not have.
std::optional<std::string> Entity(std::string_view name) {
  struct Named {
    std::string_view name;
    const char* text;
  };
  constexpr Named kNamed[] = {
      {"lt", "<"}, {"gt", ">"}, {"amp", "&"}, {"quot", "\""}, {"apos", "'"}};
  const Named* const found = std::ranges::find(kNamed, name, &Named::name);
  if (found != std::end(kNamed)) return found->text;
  if (!name.starts_with('#')) return std::nullopt;
  name.remove_prefix(1);
  const bool hexadecimal = name.starts_with('x');
  if (hexadecimal) name.remove_prefix(1);
  uint32_t code = 0;
  const auto [end, error] =
      std::from_chars(name.data(), name.data() + name.size(), code, hexadecimal ? 16 : 10);
  constexpr uint32_t kLastOfBasicPlane = 0xFFFF;
  if (error != std::errc() || end != name.data() + name.size() || code > kLastOfBasicPlane) {
    return std::nullopt;
  }
  return NarrowToUtf8(std::wstring(1, static_cast<wchar_t>(code)));
}

std::string Unescape(std::string_view xml) {
  std::string text;
  while (!xml.empty()) {
    const size_t plain = std::min(xml.find('&'), xml.size());
    text += xml.substr(0, plain);
    xml.remove_prefix(plain);
    const size_t end = xml.find(';');
    if (xml.empty()) break;
    const auto entity =
        end == std::string_view::npos ? std::nullopt : Entity(xml.substr(1, end - 1));
    text += entity ? *entity : "&";
    xml.remove_prefix(entity ? end + 1 : 1);
  }
  return text;
}

std::optional<int64_t> ParseUtc(std::string_view text) {
  const auto utc = ParseLocalTime(text.substr(0, kSecondLength));
  return utc ? std::optional(SecondsFromTm(*utc)) : std::nullopt;
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
  if (const auto time = FindElement(xml, "TimeCreated")) {
    event.utcSeconds = ParseUtc(Attribute(*time, "SystemTime"));
  }
  if (const auto level = FindElement(xml, "Level")) {
    event.level = ParseNumber<uint32_t>(level->content).value_or(0);
  }
  while (const auto data = TakeElement(xml, "Data")) {
    if (!event.text.empty()) event.text += ' ';
    event.text += Unescape(data->content);
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
