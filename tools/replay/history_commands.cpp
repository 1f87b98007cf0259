#include <cstdint>
#include <limits>
#include <span>

#include "common/history_io.h"
#include "common/option_text.h"
#include "common/sample_history.h"
#include "prediction/history_file.h"
#include "replay/commands.h"

namespace dozewell::replay {
namespace {

void ReportSaved(const Options& options, size_t records, Results& results) {
  const std::string count = std::to_string(records);
  results.output =
      options.json ? "{\"records\":" + count + "}\n" : *options.out + ": " + count + " records\n";
}

}  // namespace

void RunMerge(const Options& options, Results& results) {
  const auto now =
      ParseNumberOption("--now", options.utcNow.value(), std::numeric_limits<int64_t>::min(),
                        std::numeric_limits<int64_t>::max());
  const auto limit = ParseNumberOption<uint32_t>("--limit", options.limit.value(), 0,
                                                 std::numeric_limits<uint32_t>::max());
  const auto history = LoadHistoryIfExists(options.history.value());
  const auto pending = WholeRecords(LoadHistory(options.pending.value()).bytes);
  const auto merged =
      MergeHistory(history ? &history->bytes : nullptr, pending, HistoryCutoff(now, limit));
  SaveHistory(options.out.value(), merged);
  ReportSaved(options, merged.size(), results);
}

void RunExport(const Options& options, Results& results) {
  const auto records = WholeRecords(LoadDatHistory(options.history.value()).bytes);
  SaveCsvHistory(options.out.value(), records);
  ReportSaved(options, records.size(), results);
}

void RunSample(const Options& options, Results& results) {
  const SampleKind* kind = FindSampleKind(options.kind.value());
  if (kind == nullptr) {
    throw ToolError("--kind: not one of " + SampleKindNames() + ": " + *options.kind);
  }
  const int days = ParseNumberOption("--days", options.days.value(), 1, kMostSampleDays);
  const auto seed = ParseNumberOption<uint64_t>("--seed", options.seed.value(), 0,
                                                std::numeric_limits<uint64_t>::max());
  const auto records = MakeSampleHistory(*kind, days, seed);
  SaveHistory(options.out.value(), records);
  ReportSaved(options, records.size(), results);
}

}  // namespace dozewell::replay
