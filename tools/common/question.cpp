#include "common/question.h"

#include <cstdio>
#include <iterator>
#include <string_view>

#include "common/text.h"

namespace dozewell {

bool Confirm(const std::string& question) {
  std::fprintf(stderr, "%s [y/N] ", question.c_str());
  std::fflush(stderr);
  char line[80];
  if (std::fgets(line, static_cast<int>(std::size(line)), stdin) == nullptr) {
    std::fputs("\n", stderr);
    return false;
  }
  std::string_view answer = line;
  while (answer.ends_with('\n') || answer.ends_with('\r')) answer.remove_suffix(1);
  answer = TrimBlanks(answer);
  return EqualIgnoringCase(answer, "y") || EqualIgnoringCase(answer, "yes");
}

}  // namespace dozewell
