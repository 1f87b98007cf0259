#include "common/html.h"

namespace dozewell {
namespace {

std::string_view Entity(char c) {
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    case '\'':
      return "&#39;";
    default:
      return {};
  }
}

}  // namespace

std::string HtmlText(std::string_view text) {
  std::string html;
  for (const char c : text) {
    const std::string_view entity = Entity(c);
    if (entity.empty()) {
      html += c;
    } else {
      html += entity;
    }
  }
  return html;
}

std::string HtmlElement(const char* name, std::initializer_list<HtmlAttribute> attributes,
                        std::string_view content) {
  std::string html = std::string("<") + name;
  for (const HtmlAttribute& attribute : attributes) {
    html.append(" ").append(attribute.name).append("=\"");
    html.append(HtmlText(attribute.value)).append("\"");
  }
  return html.append(">").append(content).append("</").append(name).append(">");
}

std::string HtmlElement(const char* name, std::string_view content) {
  return HtmlElement(name, {}, content);
}

}  // namespace dozewell
