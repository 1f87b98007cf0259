#ifndef DOZEWELL_REPORT_DOCUMENT_H_
#define DOZEWELL_REPORT_DOCUMENT_H_

#include <string>
#include <string_view>

namespace dozewell::report {

// A page of HTML that stands alone, with our style sheet and rules of its own after it: it loads
// nothing and runs no script. `body` is HTML.
std::string Document(std::string_view title, const std::string& body,
                     std::string_view ownRules = "");

}  // namespace dozewell::report

#endif  // DOZEWELL_REPORT_DOCUMENT_H_
