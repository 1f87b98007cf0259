#ifndef DOZEWELL_COMMON_HTML_H_
#define DOZEWELL_COMMON_HTML_H_

#include <initializer_list>
#include <string>
#include <string_view>

namespace dozewell {

// The text, in UTF-8, as HTML shows it, in an element or in a value between quotation marks.
std::string HtmlText(std::string_view text);

struct HtmlAttribute {
  const char* name;
  std::string_view value;  // plain text
};

// An element around a content that is HTML already.
std::string HtmlElement(const char* name, std::initializer_list<HtmlAttribute> attributes,
                        std::string_view content);
std::string HtmlElement(const char* name, std::string_view content);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_HTML_H_
