#ifndef DOZEWELL_CTL_CHECK_CHECK_REPORT_H_
#define DOZEWELL_CTL_CHECK_CHECK_REPORT_H_

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "common/json.h"
#include "ctl/check/finding.h"
#include "ctl/check/try_timeouts.h"

namespace dozewell::ctl {

struct CheckLine {
  const char* name;
  const char* label;
  Finding finding;
};

// What a check found.
struct CheckReport {
  std::vector<CheckLine> lines;
  std::optional<TriedTimeouts> tried;

  size_t Count(Verdict verdict) const;
};

std::vector<CheckLine> Judge(const CheckFacts& facts);

std::string CheckText(const CheckReport& report);
Json CheckJson(const CheckReport& report);

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_CHECK_CHECK_REPORT_H_
