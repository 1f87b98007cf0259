#include "event_log/xml_reader.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <iterator>
#include <optional>
#include <system_error>

#include "base/utf8.h"
#include "event_log/event_log_error.h"

namespace dozewell {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

std::string Quoted(std::string_view name) { return "<" + std::string(name) + ">"; }

std::string CharacterText(uint32_t code) {
  constexpr uint32_t kFirstBeyondBasicPlane = 0x10000;
  if (code < kFirstBeyondBasicPlane)
    return NarrowToUtf8(std::wstring(1, static_cast<wchar_t>(code)));
  const uint32_t offset = code - kFirstBeyondBasicPlane;
  return NarrowToUtf8(std::wstring{static_cast<wchar_t>(0xD800 + (offset >> 10)),
                                   static_cast<wchar_t>(0xDC00 + (offset & 0x3FF))});
}

// The character that "amp" or "#x41" stands for; nothing for a name that XML does not have.
std::optional<std::string> Reference(std::string_view name) {
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
  const bool isHexadecimal = name.starts_with('x');
  if (isHexadecimal) name.remove_prefix(1);
  constexpr uint32_t kLastCharacter = 0x10FFFF;
  uint32_t code = 0;
  const char* const end = name.data() + name.size();
  const auto [stop, error] = std::from_chars(name.data(), end, code, isHexadecimal ? 16 : 10);
  if (error != std::errc() || stop != end || code > kLastCharacter) return std::nullopt;
  return CharacterText(code);
}

}  // namespace

void XmlReader::Fail(const std::string& what) const {
  const auto line = 1 + std::ranges::count(xml_.substr(0, position_), '\n');
  throw EventLogError(name_ + ": line " + std::to_string(line) + ": " + what);
}

XmlReader::Piece XmlReader::Next() {
  ended_ = false;
  if (isEmptyElement_) return EndElement();
  for (;;) {
    const std::string_view rest = xml_.substr(position_);
    if (rest.empty()) {
      if (!open_.empty()) Fail(Quoted(open_.back()) + " has no end");
      return Piece::Nothing;
    }
    if (rest.starts_with("<![CDATA[")) return TakeText();
    if (SkipBetween("<!--", "-->") || SkipBetween("<?", "?>")) continue;
    if (rest.starts_with("<!")) Fail("a declaration, which event logs do not have");
    if (rest.starts_with("</")) return TakeEnd();
    if (rest.starts_with('<')) return TakeStart();
    if (!open_.empty()) return TakeText();
    SkipBlanks();
    if (position_ < xml_.size() && xml_[position_] != '<') Fail("text where an element should be");
  }
}

std::string XmlReader::Attribute(std::string_view name) const {
  const auto found = std::ranges::find(attributes_, name, &RawAttribute::name);
  return found == attributes_.end() ? "" : Unescape(found->value);
}

bool XmlReader::SkipBetween(std::string_view opening, std::string_view closing) {
  if (!xml_.substr(position_).starts_with(opening)) return false;
  position_ += opening.size();
  TakeUntil(closing, "a comment or processing instruction");
  return true;
}

std::string_view XmlReader::TakeUntil(std::string_view closing, const char* what) {
  const size_t end = xml_.find(closing, position_);
  if (end == std::string_view::npos) Fail(std::string(what) + " has no end");
  const std::string_view taken = xml_.substr(position_, end - position_);
  position_ = end + closing.size();
  return taken;
}

std::string_view XmlReader::TakeName() {
  constexpr std::string_view kAfterName = " \t\r\n/>=<'\"&";
  const size_t end = std::min(xml_.find_first_of(kAfterName, position_), xml_.size());
  if (end == position_) Fail("a name is missing");
  const std::string_view name = xml_.substr(position_, end - position_);
  position_ = end;
  return name;
}

void XmlReader::SkipBlanks() {
  position_ = std::min(xml_.find_first_not_of(kBlanks, position_), xml_.size());
}

XmlReader::RawAttribute XmlReader::TakeAttribute() {
  const std::string_view name = TakeName();
  SkipBlanks();
  if (!xml_.substr(position_).starts_with('=')) Fail("an attribute has no value");
  ++position_;
  SkipBlanks();
  const std::string_view quote = xml_.substr(position_, 1);
  if (quote != "'" && quote != "\"") Fail("an attribute's value is not quoted");
  ++position_;
  const std::string_view value = TakeUntil(quote, "an attribute's value");
  if (value.find('<') != std::string_view::npos) Fail("an attribute's value holds a <");
  return {name, value};
}

XmlReader::Piece XmlReader::TakeStart() {
  ++position_;
  element_ = TakeName();
  attributes_.clear();
  for (;;) {
    const size_t before = position_;
    SkipBlanks();
    const std::string_view rest = xml_.substr(position_);
    isEmptyElement_ = rest.starts_with("/>");
    if (isEmptyElement_ || rest.starts_with('>')) {
      position_ += isEmptyElement_ ? 2 : 1;
      open_.push_back(element_);
      return Piece::Start;
    }
    if (rest.empty() || position_ == before) Fail(Quoted(element_) + " is not well formed");
    attributes_.push_back(TakeAttribute());
  }
}

XmlReader::Piece XmlReader::TakeEnd() {
  position_ += 2;
  element_ = TakeName();
  SkipBlanks();
  if (!xml_.substr(position_).starts_with('>')) Fail("the end of an element is not well formed");
  if (open_.empty() || open_.back() != element_) {
    Fail("</" + std::string(element_) + "> ends nothing");
  }
  ++position_;
  return EndElement();
}

XmlReader::Piece XmlReader::EndElement() {
  element_ = open_.back();
  open_.pop_back();
  isEmptyElement_ = false;
  ended_ = true;
  return Piece::End;
}

XmlReader::Piece XmlReader::TakeText() {
  constexpr std::string_view kCdata = "<![CDATA[";
  if (open_.empty()) Fail("text where an element should be");
  if (xml_.substr(position_).starts_with(kCdata)) {
    position_ += kCdata.size();
    text_ = TakeUntil("]]>", "CDATA");
    return Piece::Text;
  }
  const size_t end = std::min(xml_.find('<', position_), xml_.size());
  text_ = Unescape(xml_.substr(position_, end - position_));
  position_ = end;
  return Piece::Text;
}

std::string XmlReader::Unescape(std::string_view raw) const {
  std::string text;
  while (!raw.empty()) {
    const size_t plain = std::min(raw.find('&'), raw.size());
    text += raw.substr(0, plain);
    raw.remove_prefix(plain);
    if (raw.empty()) break;
    const size_t end = raw.find(';');
    const auto character =
        end == std::string_view::npos ? std::nullopt : Reference(raw.substr(1, end - 1));
    if (!character) Fail("an & that stands for no character");
    text += *character;
    raw.remove_prefix(end + 1);
  }
  return text;
}

}  // namespace dozewell
