#include "report/section.h"

#include "common/format_text.h"
#include "common/html.h"

namespace dozewell::report {

std::string Section(const char* id, std::string_view title, std::string_view explanation,
                    const std::string& figure) {
  const std::string titleId = std::string(id) + "-title";
  return HtmlElement("section", {{"id", id}, {"aria-labelledby", titleId}},
                     HtmlElement("h2", {{"id", titleId}}, HtmlText(title)) +
                         HtmlElement("p", {{"class", "explanation"}}, HtmlText(explanation)) +
                         figure) +
         "\n";
}

std::string Paragraph(std::string_view text) { return HtmlElement("p", HtmlText(text)); }

std::string HourAxis() {
  std::string hours;
  for (int hour = 0; hour < 24; hour += 3) {
    hours += HtmlElement("span", FormatText("%02d", hour));
  }
  return HtmlElement("div", {{"class", "axis"}, {"aria-hidden", "true"}}, hours);
}

std::string LegendEntry(const char* cssClass, std::string_view name) {
  const std::string area = std::string("swatch ") + cssClass;
  return HtmlElement("li", HtmlElement("i", {{"class", area}}, "") + HtmlText(name));
}

}  // namespace dozewell::report
