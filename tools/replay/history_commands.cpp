#include <cstdint>
#include <limits>
#include <span>

#include "common/history_io.h"
#include "common/option_text.h"
#include "common/output_file.h"
#include "common/sample_history.h"
#include "prediction/history_file.h"
#include "replay/commands.h"
#include "replay/saved_text.h"

namespace dozewell::replay {

void RunMerge(const Options& options, Results& results) {
  const int64_t now = ParseUtcOption("--now", options.now.value());
  const auto limit = ParseNumberOption<uint32_t>("--limit", options.limit.value(), 0,
                                                 std::numeric_limits<uint32_t>::max());
  RequireNoInput(options.out.value(),
                 {{"--history", options.history}, {"--pending", options.pending}});
  const auto history = LoadHistoryIfExists(options.history.value(), results.warnings);
  const auto pending = WholeRecords(LoadHistory(options.pending.value(), results.warnings).bytes);
  const auto merged =
      MergeHistory(history ? &history->bytes : nullptr, pending, HistoryCutoff(now, limit));
  SaveHistory(options.out.value(), merged, results.identity);
  results.output = SavedText(options, merged, results.identity);
}

void RunExport(const Options& options, Results& results) {
  RequireNoInput(options.out.value(), {{"--history", options.history}});
  const auto records =
      WholeRecords(LoadDatHistory(options.history.value(), results.warnings).bytes);
  SaveCsvHistory(options.out.value(), records, results.identity);
  results.output = SavedText(options, records, results.identity);
}

void RunSample(const Options& options, Results& results) {
  const SampleKind* kind = FindSampleKind(options.kind.value());
  if (kind == nullptr) {
    throw ToolError(WrongValue("--kind", "one of " + SampleKindNames(), *options.kind));
  }
  const int days = ParseNumberOption("--days", options.days.value(), 1, kMostSampleDays);
  const auto seed = ParseNumberOption<uint64_t>("--seed", options.seed.value(), 0,
                                                std::numeric_limits<uint64_t>::max());
  const auto records = MakeSampleHistory(*kind, days, seed);
  SaveHistory(options.out.value(), records, results.identity);
  results.output = SavedText(options, records, results.identity);
}

}  // namespace dozewell::replay
