#include "ctl/live_rates.h"

#include <memory>
#include <utility>

#include "base/durable_file.h"
#include "base/utf8.h"
#include "ctl/command_failure.h"
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

std::optional<tm> NewestOf(const RatesState& state) {
  tm newest;
  return TmFromSeconds(state.newest, newest) ? std::optional(newest) : std::nullopt;
}

// Learns what the service has not saved yet, and says how new the state is then.
AsOf LearnUnsaved(RatesState& state, const UnsavedLearning& unsaved) {
  AsOf asOf = {false, NewestOf(state), 0, unsaved.why};
  const auto events = unsaved.learning.After(asOf.saved);
  asOf.isNow = asOf.why.empty() && events;
  if (!asOf.isNow) {
    if (asOf.why.empty()) asOf.why = kLogTooShort;
    return asOf;
  }
  for (const TimeLineEvent& event : *events) state.Take(event.state, SecondsFromTm(event.time));
  asOf.since = events->size();
  return asOf;
}

}  // namespace

std::optional<LiveRates> ExplainLiveRates(IConfigurations& configuration,
                                          const UnsavedLearning& unsaved, const tm& at) {
  if (ReadPredictorChoice(configuration).kind != PredictorKind::Rates) return std::nullopt;
  const std::wstring path = LiveFilePath(kRatesFileName);
  LoadedRates loaded = LoadRates(path);
  const auto state = loaded.state ? std::move(loaded.state) : std::make_unique<RatesState>();
  const FileContent history = ReadDurableFile(LiveFilePath(kHistoryFileName));
  if (!history.failure) CatchUp(*state, IncreasingRecords(history.bytes));
  const AsOf asOf = LearnUnsaved(*state, unsaved);
  if (!asOf.isNow && !asOf.saved) {
    throw CommandFailure(ExitCode::NothingLearnt,
                         NarrowToUtf8(path) + " tells of no event" + UnknownLearningText(asOf));
  }
  return LiveRates{
      ExplainRates(*state, WishesOf(state->learnt, ReadWeight(configuration), CanWake()), at), asOf,
      NewestOf(*state)};
}

}  // namespace dozewell::ctl
