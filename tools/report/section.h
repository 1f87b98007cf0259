#ifndef DOZEWELL_REPORT_SECTION_H_
#define DOZEWELL_REPORT_SECTION_H_

#include <string>
#include <string_view>

namespace dozewell::report {

// A section of the page: its title, one plain sentence that explains its figure, and the figure,
// which is HTML. `id` must be unique on the page.
std::string Section(const char* id, std::string_view title, std::string_view explanation,
                    const std::string& figure);

// A paragraph of plain text.
std::string Paragraph(std::string_view text);

// The axis over a figure of days, with a label for every third hour.
std::string HourAxis();

// A legend's entry for a colour of a figure: a small area of that class, and its name.
std::string LegendEntry(const char* cssClass, std::string_view name);

}  // namespace dozewell::report

#endif  // DOZEWELL_REPORT_SECTION_H_
