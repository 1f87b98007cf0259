#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/clock.h"
#include "base/durable_file.h"
#include "base/file.h"
#include "base/utf8.h"
#include "common/history_io.h"
#include "common/json.h"
#include "common/optimizer_inputs.h"
#include "common/output_file.h"
#include "common/standard_stream.h"
#include "ctl/command_failure.h"
#include "ctl/commands.h"
#include "ctl/live_engine.h"
#include "ctl/live_files.h"
#include "ctl/live_identity.h"
#include "ctl/live_rates.h"
#include "power/hibernate_after.h"
#include "prediction/history_file.h"
#include "report/report.h"

namespace dozewell::ctl {
namespace {

constexpr const char* kDefaultName = "dozewell-report.html";

// The user's own timeout for the power source that the machine runs on, or the usual one where it
// cannot be read.
int64_t LiveHibernateAfterSeconds() {
  constexpr int64_t kMinute = 60;
  const std::optional<uint32_t> minutes = ReadCurrentHA();
  return minutes ? *minutes * kMinute : ComparedTimeoutSeconds(std::nullopt);
}

// Only the file needs a warning: without the folder, the engine has failed before.
std::vector<HistoryRecord> LiveHistory(std::vector<std::string>& warnings) {
  const std::wstring path = LiveFilePath(kHistoryFileName);
  const std::string name = NarrowToUtf8(path);
  FileContent content = ReadDurableFile(path);
  if (!content.failure) {
    return IncreasingRecords(DatHistory(name, std::move(content.bytes), warnings).bytes);
  }
  warnings.push_back(name + ": ignored: it cannot be opened");
  return {};
}

}  // namespace

void RunReport(const Options& options, const Console& console) {
  const std::string name = options.out.value_or(kDefaultName);
  if (IsStandardStream(name) && options.json) {
    throw CommandFailure(ExitCode::Usage,
                         "--json prints to standard output, so the page cannot be written there");
  }
  tm now;
  if (!LocalTimeNow(now)) {
    throw CommandFailure(ExitCode::NotDone, "the clock cannot be read");
  }
  RequireNoServiceFile(name);
  // The page shows minutes, so pages of the same minute are the same.
  now.tm_sec = 0;
  RequireReadableData();
  LiveEngine engine;
  std::vector<std::string> warnings = engine.Warnings();
  const std::vector<HistoryRecord> history = LiveHistory(warnings);
  for (const std::string& warning : warnings) console.warn("warning: " + warning);
  const std::string page = report::MakeReport(
      {engine.Configuration(), engine.Tracker(), history, now, LiveHibernateAfterSeconds(),
       warnings, LiveIdentity(), ExplainLiveRates(engine.Configuration(), now)});
  OutputFile(name).Write(page.data(), page.size());
  if (IsStandardStream(name)) return;
  console.print(options.json ? LiveLine({{"file", name}, {"bytes", page.size()}})
                             : name + ": " + std::to_string(page.size()) + " bytes\n");
}

}  // namespace dozewell::ctl
