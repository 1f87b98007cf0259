#include "ctl/live_rates.h"

#include <memory>
#include <utility>

#include "base/durable_file.h"
#include "ctl/live_files.h"
#include "ctl/machine_kind.h"
#include "ctl/service_calls.h"
#include "prediction/history_file.h"
#include "prediction/predictor_choice.h"
#include "prediction/rates/rates_file.h"
#include "prediction/rates/rates_predictor.h"

namespace dozewell::ctl {
namespace {

bool CanWake() {
  MachineKind kind = ReadMachineKind();
  bool isEnabled = false;
  NoteWakeTimer(kind, CallGetDriverEnabled(isEnabled).IsDone());
  if (kind.windowsTimer == WindowsTimer::Unused) return kind.hasDriver.value_or(false);
  return kind.windowsTimer == WindowsTimer::Wakes && WindowsTimerLimits(kind).empty();
}

}  // namespace

std::optional<RatesExplanation> ExplainLiveRates(IConfigurations& configuration, const tm& at) {
  if (ReadPredictorChoice(configuration).kind != PredictorKind::Rates) return std::nullopt;
  LoadedRates loaded = LoadRates(LiveFilePath(kRatesFileName));
  const auto state = loaded.state ? std::move(loaded.state) : std::make_unique<RatesState>();
  const FileContent history = ReadDurableFile(LiveFilePath(kHistoryFileName));
  if (!history.failure) CatchUp(*state, IncreasingRecords(history.bytes));
  return ExplainRates(*state, WishesOf(state->learnt, ReadWeight(configuration), CanWake()), at);
}

}  // namespace dozewell::ctl
