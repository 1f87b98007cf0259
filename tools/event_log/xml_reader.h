#ifndef DOZEWELL_EVENT_LOG_XML_READER_H_
#define DOZEWELL_EVENT_LOG_XML_READER_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace dozewell {

// Reads as much of XML as event logs have, piece by piece: elements, attributes, text, CDATA and
// references to characters. Comments and processing instructions are skipped, declarations are
// refused. There may be several roots or none. Bytes of text stay as they are, control characters
// too, since logs contain some.
class XmlReader {
 public:
  enum class Piece {
    Start,   // of an element; an End follows even if it is empty
    End,     // of an element
    Text,    // within an element, all or part of the text between two other pieces
    Nothing  // the XML is over, and all elements have ended
  };

  // `xml` must outlive the reader. `name` is what errors call it.
  XmlReader(std::string_view xml, std::string name) : xml_(xml), name_(std::move(name)) {}

  // Takes the next piece. Throws EventLogError, with the line, for what is not well formed.
  Piece Next();

  // Of Start and End: the element's name.
  std::string_view Name() const { return element_; }
  // Of Start: an attribute's value, empty when there is none. Throws as Next does.
  std::string Attribute(std::string_view name) const;
  // Of Text: the text.
  const std::string& Text() const { return text_; }
  // How many elements are open; at Start and End the element itself counts.
  size_t Depth() const { return open_.size() + (ended_ ? 1 : 0); }

  // Throws EventLogError for the line at which the reader is.
  [[noreturn]] void Fail(const std::string& what) const;

 private:
  struct RawAttribute {
    std::string_view name;
    std::string_view value;
  };

  bool SkipBetween(std::string_view opening, std::string_view closing);
  std::string_view TakeUntil(std::string_view closing, const char* what);
  std::string_view TakeName();
  void SkipBlanks();
  RawAttribute TakeAttribute();
  Piece TakeStart();
  Piece TakeEnd();
  Piece TakeText();
  Piece EndElement();
  std::string Unescape(std::string_view raw) const;

  std::string_view xml_;
  std::string name_;
  size_t position_ = 0;
  std::vector<std::string_view> open_;
  std::string_view element_;
  std::vector<RawAttribute> attributes_;
  std::string text_;
  bool isEmptyElement_ = false;  // its end is the next piece
  bool ended_ = false;           // the piece is an End
};

}  // namespace dozewell

#endif  // DOZEWELL_EVENT_LOG_XML_READER_H_
