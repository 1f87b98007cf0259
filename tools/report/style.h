#ifndef DOZEWELL_REPORT_STYLE_H_
#define DOZEWELL_REPORT_STYLE_H_

namespace dozewell::report {

// The content of style.css. Null-terminated.
extern const char* const kStyle;

}  // namespace dozewell::report

#endif  // DOZEWELL_REPORT_STYLE_H_
