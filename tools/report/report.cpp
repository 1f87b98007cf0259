#include "report/report.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <optional>
#include <string_view>

#include "base/numbers.h"
#include "common/comparison.h"
#include "common/html.h"
#include "common/simulated_parameters.h"
#include "common/text.h"
#include "optimizer/simulator/simulator.h"
#include "report/choices_section.h"
#include "report/document.h"
#include "report/figure_text.h"
#include "report/learnt_section.h"
#include "report/past_section.h"
#include "report/search_section.h"
#include "report/section.h"
#include "report/tonight_section.h"
#include "report/walked_section.h"
#include "report/why_section.h"
#include "report/worth_section.h"
#include "settings/setting_names.h"
#include "walk/week_samples.h"

namespace dozewell::report {
namespace {

using Sections = std::vector<Section>;

std::string DateOf(const HistoryRecord& record) {
  return LongDateText(TimeOf(std::clamp(TruncateToInt64(record.time), int64_t{0}, kLastSecond)));
}

std::string HistoryText(const std::vector<HistoryRecord>& history) {
  if (history.empty()) return "Nothing is recorded yet.";
  return "The history has " + CountText(std::ssize(history), "record", "records") + ", from " +
         DateOf(history.front()) + " to " + DateOf(history.back()) + ".";
}

std::string Note(std::string_view text) {
  return HtmlElement("p", {{"class", "note"}}, HtmlText(text));
}

std::string Header(const ReportInput& input) {
  std::string notes;
  for (const std::string& note : input.notes) notes += Note(note);
  if (input.rates) {
    notes += Note(
        "The service predicts with rates here. What it has learnt is shown by the slots, which go "
        "on learning beside them.");
  }
  return HtmlElement(
             "header",
             HtmlElement("h1", "When this machine is needed") +
                 HtmlElement("p", {{"class", "lead"}},
                             HtmlText("Dozewell report of " + LongDateText(input.now) + ", " +
                                      TimeText(input.now) + ". " + HistoryText(input.history))) +
                 HtmlElement("p", {{"class", "identity"}}, HtmlText(IdentityText(input.identity))) +
                 notes) +
         "\n";
}

std::string Links(const char* name, const Sections& sections) {
  std::string links;
  for (const Section& section : sections) {
    const std::string target = std::string("#") + section.id;
    links += HtmlElement("li", HtmlElement("a", {{"href", target}}, HtmlText(section.title)));
  }
  return HtmlElement("p", HtmlText(name)) + HtmlElement("ul", links);
}

std::string Contents(const Sections& glance, const Sections& details) {
  return HtmlElement(
             "nav", {{"aria-label", "Contents"}},
             Links("At a glance", glance) + (details.empty() ? "" : Links("In detail", details))) +
         "\n";
}

std::string HtmlOf(const Sections& sections) {
  std::string html;
  for (const Section& section : sections) html += section.html;
  return html;
}

bool IsNothingKnown(const Explanation& explanation) {
  return explanation.unknownSlots == explanation.slotCount;
}

Section NothingSection() {
  return MakeSection(
      "nothing", "Nothing is known yet",
      "This machine has no record yet of when it was in use, so nothing is "
      "predicted. When it is put to sleep, the timeout that its user has set decides "
      "when it hibernates, and it is not woken.",
      Paragraph("The service learns from each time that the machine is used. The "
                "first predictions come within the first week; make this page "
                "again then."));
}

// The strength of the settings, when there is a weight for it.
std::optional<size_t> StrengthOf(const std::string& text, size_t weights) {
  for (size_t strength = 0; strength < weights; ++strength) {
    if (text == std::to_string(strength)) return strength;
  }
  return std::nullopt;
}

// What a replay of the history shows: a section at a glance, and others in detail.
void AddReplays(const ReportInput& input, Sections& glance, Sections& details) {
  try {
    const Comparison comparison =
        Compare(input.history, input.configuration, input.hibernateAfterSeconds);
    const Walk walk =
        WalkForward(input.history, input.configuration, input.hibernateAfterSeconds, input.habits);
    if (walk.sleeps == 0) {
      glance.push_back(TooShortSection());
      return;
    }
    const WeekSamples samples(input.history, walk.weeks);
    const std::string strength = input.configuration.GetValue(kPredictorSection, kStrengthName);
    const WalkedHistory walked = {walk, samples, StrengthOf(strength, walk.weights.size()),
                                  ReadPredictorChoice(input.configuration).kind,
                                  input.hibernateAfterSeconds};
    NativeSimulatorConfigurations parameters = SimulatedParameters(input.configuration);
    glance.push_back(WorthSection(walked));
    details = {
        WalkedSection(walked), ChoicesSection(comparison),
        SearchSection(comparison, ReadPredictorNumbers(input.configuration, kScoringWeightsName),
                      strength, input.hibernateAfterSeconds),
        PastSection(SimulatePredictor(parameters, input.history))};
  } catch (const std::exception& error) {
    glance.push_back(BrokenSection(error.what()));
  }
}

std::string Body(const ReportInput& input) {
  const Explanation explanation = Explain(input.tracker, input.now);
  if (input.history.empty() && IsNothingKnown(explanation)) {
    return Header(input) + HtmlElement("main", "\n" + NothingSection().html);
  }
  Sections glance = {
      input.rates ? TonightSection(*input.rates) : TonightSection(explanation, input.tracker),
      LearntSection(input.tracker)};
  Sections details;
  AddReplays(input, glance, details);
  glance.push_back(input.rates ? WhySection(*input.rates) : WhySection(explanation));
  return Header(input) + Contents(glance, details) +
         HtmlElement("main", "\n" + HtmlOf(glance) +
                                 HtmlElement("div", {{"id", "details"}}, "\n" + HtmlOf(details)));
}

}  // namespace

std::string MakeReport(const ReportInput& input) {
  const std::string title = "Dozewell report, " + LongDateText(input.now);
  return Document(title, Body(input));
}

}  // namespace dozewell::report
