#include "common/question.h"

#include <cstdio>
#include <iterator>
#include <string_view>

#include "common/plain_text.h"
#include "common/text.h"
#include "common/write_text.h"

namespace dozewell {

bool Confirm(const std::string& question, bool inputIsTerminal) {
  WriteText(stderr, PlainText(question, '?') + " [y/N] ");
  char line[80] = {};
  const bool isAnswered = std::fgets(line, static_cast<int>(std::size(line)), stdin) != nullptr;
  // Only what is typed at a terminal is shown there, with its line feed.
  if (!isAnswered || !inputIsTerminal) WriteText(stderr, "\n");
  std::string_view answer = line;
  while (answer.ends_with('\n') || answer.ends_with('\r')) answer.remove_suffix(1);
  answer = TrimBlanks(answer);
  return EqualIgnoringCase(answer, "y") || EqualIgnoringCase(answer, "yes");
}

}  // namespace dozewell
