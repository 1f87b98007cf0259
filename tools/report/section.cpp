#include "report/section.h"

#include "common/format_text.h"
#include "common/html.h"

namespace dozewell::report {

Section MakeSection(const char* id, std::string_view title, std::string_view explanation,
                    const std::string& figure) {
  const std::string titleId = std::string(id) + "-title";
  return {id, std::string(title),
          HtmlElement("section", {{"id", id}, {"aria-labelledby", titleId}},
                      HtmlElement("h2", {{"id", titleId}}, HtmlText(title)) +
                          HtmlElement("p", {{"class", "explanation"}}, HtmlText(explanation)) +
                          figure) +
              "\n"};
}

std::string Paragraph(std::string_view text) { return HtmlElement("p", HtmlText(text)); }

std::string Fold(std::string_view title, const std::string& content) {
  return HtmlElement("details", HtmlElement("summary", HtmlText(title)) + content);
}

std::string HourAxis() {
  std::string hours;
  for (int hour = 0; hour < 24; hour += 3) {
    hours += HtmlElement("span", FormatText("%02d", hour));
  }
  return HtmlElement("div", {{"class", "axis"}, {"aria-hidden", "true"}}, hours);
}

std::string Legend(const std::string& entries) {
  return HtmlElement("ul", {{"class", "legend"}}, entries);
}

std::string LegendEntry(const char* cssClass, std::string_view name) {
  const std::string area = std::string("swatch ") + cssClass;
  return HtmlElement("li", HtmlElement("i", {{"class", area}}, "") + HtmlText(name));
}

std::string ListTable(std::string_view caption, const char* first, const char* second,
                      const std::string& rows) {
  return HtmlElement(
      "table", {{"class", "list"}},
      HtmlElement("caption", HtmlText(caption)) +
          HtmlElement("thead",
                      HtmlElement("tr", HtmlElement("th", {{"scope", "col"}}, first) +
                                            HtmlElement("th", {{"scope", "col"}}, second))) +
          HtmlElement("tbody", rows));
}

std::string ListRow(std::string_view name, std::string_view list) {
  return HtmlElement("tr", HtmlElement("th", {{"scope", "row"}}, HtmlText(name)) +
                               HtmlElement("td", HtmlText(list))) +
         "\n";
}

}  // namespace dozewell::report
