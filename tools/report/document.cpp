#include "report/document.h"

#include "common/html.h"
#include "report/style.h"

namespace dozewell::report {
namespace {

constexpr const char* kHead =
    "<!DOCTYPE html>\n"
    "<html lang=\"en\">\n"
    "<head>\n"
    "<meta charset=\"utf-8\">\n"
    "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
    "<meta name=\"color-scheme\" content=\"light dark\">\n"
    // Even if a text smuggled something in, nothing is loaded and nothing runs.
    "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src "
    "'unsafe-inline'; img-src data:\">\n"
    "<link rel=\"icon\" href=\"data:,\">\n";

}  // namespace

std::string Document(std::string_view title, const std::string& body, std::string_view ownRules) {
  return kHead + HtmlElement("title", HtmlText(title)) + "\n" +
         HtmlElement("style", std::string("\n") + kStyle + std::string(ownRules)) +
         "\n</head>\n<body>\n" + body + "\n</body>\n</html>\n";
}

}  // namespace dozewell::report
