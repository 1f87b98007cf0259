#include "common/explanation.h"
#include "common/explanation_json.h"
#include "replay/commands.h"
#include "replay/learnt_data.h"

namespace dozewell::replay {

void RunExplain(const Options& options, Results& results) {
  LearntData learnt(options, results);
  ArbitraryCycleProbabilityTracker& tracker = learnt.Tracker();
  const Explanation explanation = Explain(tracker, learnt.TimeOrLastEvent("--at", options.at));
  results.output = options.json ? IdentifiedLine(ExplanationJson(explanation), results.identity)
                                : ExplanationText(explanation);
}

}  // namespace dozewell::replay
