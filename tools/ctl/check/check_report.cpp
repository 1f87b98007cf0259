#include "ctl/check/check_report.h"

#include <algorithm>
#include <cmath>

#include "common/format_text.h"
#include "common/plain_text.h"
#include "common/text.h"

namespace dozewell::ctl {
namespace {

const char* VerdictText(Verdict verdict) {
  switch (verdict) {
    case Verdict::Ok:
      return "ok";
    case Verdict::Note:
      return "note";
    case Verdict::Bad:
      return "BAD";
  }
  return "";
}

const char* VerdictJson(Verdict verdict) {
  return verdict == Verdict::Bad ? "bad" : VerdictText(verdict);
}

std::string LineText(const CheckLine& line) {
  const auto& [verdict, text, advice] = line.finding;
  std::string lines =
      FormatText("%-4s  %-17s ", VerdictText(verdict), line.label) + PlainText(text, ' ') + "\n";
  if (!advice.empty()) lines += FormatText("%24s", "") + "-> " + PlainText(advice, ' ') + "\n";
  return lines;
}

std::string TriedText(const TriedTimeouts& tried) {
  std::string text = "Writing each hibernate-after timeout as it is\n";
  for (const TriedStep& step : tried.steps) {
    text += FormatText("  %-28s %9.2f ms%s\n", step.name.c_str(), step.milliseconds,
                       step.isDone ? "" : "  failed");
  }
  text += FormatText("  %-28s %9.2f ms of the %.0f ms that a suspend has\n", "all of it",
                     tried.Milliseconds(), kSuspendMilliseconds);
  if (!tried.refusal.empty()) text += "  nothing more is written: " + tried.refusal + "\n";
  return text;
}

double Rounded(double milliseconds) {
  constexpr double kHundredths = 100;
  return std::round(milliseconds * kHundredths) / kHundredths;
}

Json TriedJson(const TriedTimeouts& tried) {
  Json steps = Json::array();
  for (const TriedStep& step : tried.steps) {
    steps.push_back({{"name", step.name},
                     {"done", step.isDone},
                     {"milliseconds", JsonNumber(Rounded(step.milliseconds))}});
  }
  return {{"done", tried.IsDone()},
          {"refusal", tried.refusal.empty() ? Json() : Json(tried.refusal)},
          {"steps", steps},
          {"milliseconds", JsonNumber(Rounded(tried.Milliseconds()))},
          {"suspendMilliseconds", JsonNumber(kSuspendMilliseconds)}};
}

}  // namespace

size_t CheckReport::Count(Verdict verdict) const {
  return static_cast<size_t>(std::ranges::count_if(
      lines, [verdict](const CheckLine& line) { return line.finding.verdict == verdict; }));
}

std::vector<CheckLine> Judge(const CheckFacts& facts) {
  std::vector<CheckLine> lines;
  for (const auto rules : {MachineRules(), ServiceRules(), RecordRules()}) {
    for (const CheckRule& rule : rules) lines.push_back({rule.name, rule.label, rule.judge(facts)});
  }
  return lines;
}

std::string CheckText(const CheckReport& report) {
  std::string text;
  for (const CheckLine& line : report.lines) text += LineText(line);
  if (report.tried) text += TriedText(*report.tried);
  const auto count = [&report](Verdict verdict) {
    return static_cast<int64_t>(report.Count(verdict));
  };
  return text + std::to_string(count(Verdict::Ok)) + " ok, " +
         CountText(count(Verdict::Note), "note", "notes") + ", " +
         std::to_string(count(Verdict::Bad)) + " BAD\n";
}

Json CheckJson(const CheckReport& report) {
  Json lines = Json::array();
  for (const CheckLine& line : report.lines) {
    const auto& [verdict, text, advice] = line.finding;
    lines.push_back({{"name", line.name},
                     {"verdict", VerdictJson(verdict)},
                     {"text", text},
                     {"advice", advice.empty() ? Json() : Json(advice)}});
  }
  return {{"ok", report.Count(Verdict::Ok)},
          {"notes", report.Count(Verdict::Note)},
          {"bad", report.Count(Verdict::Bad)},
          {"lines", lines},
          {"try", report.tried ? TriedJson(*report.tried) : Json()}};
}

}  // namespace dozewell::ctl
