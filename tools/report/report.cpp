#include "report/report.h"

#include <algorithm>
#include <cstddef>
#include <exception>

#include "base/numbers.h"
#include "common/comparison.h"
#include "common/html.h"
#include "common/simulated_parameters.h"
#include "common/text.h"
#include "optimizer/simulator/simulator.h"
#include "report/document.h"
#include "report/figure_text.h"
#include "report/gain_section.h"
#include "report/now_section.h"
#include "report/outlook_section.h"
#include "report/past_section.h"
#include "report/section.h"
#include "report/week_section.h"
#include "report/winners_section.h"
#include "settings/setting_names.h"

namespace dozewell::report {
namespace {

std::vector<float> Probabilities(ITracker& tracker) {
  std::vector<float> probabilities(static_cast<size_t>(tracker.GetData()->slotCount));
  for (size_t slot = 0; slot < probabilities.size(); ++slot) {
    probabilities[slot] = tracker.GetSlotProbability(static_cast<int>(slot));
  }
  return probabilities;
}

std::string DateOf(const HistoryRecord& record) {
  return LongDateText(TimeOf(std::clamp(TruncateToInt64(record.time), int64_t{0}, kLastSecond)));
}

std::string HistoryText(const std::vector<HistoryRecord>& history) {
  if (history.empty()) return "Nothing is recorded yet.";
  return "The history has " + CountText(std::ssize(history), "record", "records") + ", from " +
         DateOf(history.front()) + " to " + DateOf(history.back()) + ".";
}

std::string Header(const ReportInput& input) {
  std::string notes;
  for (const std::string& note : input.notes) {
    notes += HtmlElement("p", {{"class", "note"}}, HtmlText(note));
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

std::string ReplaySections(const ReportInput& input) {
  try {
    const Comparison comparison =
        Compare(input.history, input.configuration, input.hibernateAfterSeconds);
    NativeSimulatorConfigurations parameters = SimulatedParameters(input.configuration);
    return GainSection(comparison, input.hibernateAfterSeconds) +
           WinnersSection(comparison,
                          ReadPredictorNumbers(input.configuration, kScoringWeightsName),
                          input.configuration.GetValue(kPredictorSection, kStrengthName),
                          input.hibernateAfterSeconds) +
           PastSection(SimulatePredictor(parameters, input.history));
  } catch (const std::exception& error) {
    return Section("replay", "The recorded past",
                   std::string("The history cannot be replayed: ") + error.what() + ".", "");
  }
}

}  // namespace

std::string MakeReport(const ReportInput& input) {
  const std::string title = "Dozewell report, " + LongDateText(input.now);
  const std::string sections =
      NowSection(Explain(input.tracker, input.now)) +
      WeekSection(ShapeOf(*input.tracker.GetData()), Probabilities(input.tracker)) +
      OutlookSection(input.tracker, input.now) + ReplaySections(input);
  return Document(title, Header(input) + HtmlElement("main", "\n" + sections));
}

}  // namespace dozewell::report
