#ifndef DOZEWELL_CTL_CHECK_FINDING_H_
#define DOZEWELL_CTL_CHECK_FINDING_H_

#include <span>
#include <string>
#include <utility>

#include "ctl/check/facts.h"

namespace dozewell::ctl {

enum class Verdict {
  Ok,
  Note,  // worth knowing, or not known
  Bad,   // keeps the service from doing its work
};

// What a check says of one thing.
struct Finding {
  Verdict verdict;
  std::string text;
  std::string advice;  // what to do; empty when nothing is to be done
};

inline Finding Ok(std::string text) { return {Verdict::Ok, std::move(text), {}}; }
inline Finding Note(std::string text, std::string advice = {}) {
  return {Verdict::Note, std::move(text), std::move(advice)};
}
inline Finding Bad(std::string text, std::string advice) {
  return {Verdict::Bad, std::move(text), std::move(advice)};
}

// A line of the check: its name for programs, its name for people, and how it is judged.
struct CheckRule {
  const char* name;
  const char* label;
  Finding (*judge)(const CheckFacts& facts);
};

// Of the machine and its power settings; the service itself; its settings, data and events.
std::span<const CheckRule> MachineRules();
std::span<const CheckRule> ServiceRules();
std::span<const CheckRule> RecordRules();

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_CHECK_FINDING_H_
