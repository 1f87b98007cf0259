#ifndef DOZEWELL_REPORT_SECTION_H_
#define DOZEWELL_REPORT_SECTION_H_

#include <string>
#include <string_view>

namespace dozewell::report {

// A section of the page, to which the page's contents have a link.
struct Section {
  const char* id;  // unique on the page
  std::string title;
  std::string html;
};

// A section with its title, one plain sentence that explains its figure, and the figure, which is
// HTML.
Section MakeSection(const char* id, std::string_view title, std::string_view explanation,
                    const std::string& figure);

// A paragraph of plain text.
std::string Paragraph(std::string_view text);

// Content that is shown when a reader opens it, and on paper.
std::string Fold(std::string_view title, const std::string& content);

// The axis over a figure of days, with a label for every third hour.
std::string HourAxis();

// The legend of a figure, and an entry of it: a small area of that class, and its name.
std::string Legend(const std::string& entries);
std::string LegendEntry(const char* cssClass, std::string_view name);

// A table of two columns: what each row is about, and what it lists. `rows` are ListRows.
std::string ListTable(std::string_view caption, const char* first, const char* second,
                      const std::string& rows);
std::string ListRow(std::string_view name, std::string_view list);

}  // namespace dozewell::report

#endif  // DOZEWELL_REPORT_SECTION_H_
