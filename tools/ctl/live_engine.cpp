#include "ctl/live_engine.h"

#include <algorithm>
#include <exception>

#include "base/exception.h"
#include "base/utf8.h"
#include "common/machine_identity.h"
#include "common/problem_place.h"
#include "ctl/command_failure.h"
#include "ctl/live_files.h"
#include "ctl/live_settings.h"
#include "ctl/read_access.h"
#include "prediction/cyclic_probability_predictor.h"
#include "prediction/history_file.h"
#include "settings/data_folder.h"
#include "settings/setting_names.h"

namespace dozewell::ctl {
namespace {

// False for an event that the service has refused as well.
bool Learns(ITracker& tracker, const TimeLineEvent& event) {
  try {
    tracker.ProcessEvent(event);
    return true;
  } catch (const FixedTextException&) {
    return false;
  }
}

}  // namespace

LiveEngine::LiveEngine()
    : path_(LiveFilePath(kDataFileName)),
      loaded_(TellPlace(
          [this] {
            return PlaceOfProblem(configuration_, {NarrowToUtf8(kProductKey), NarrowToUtf8(path_)});
          },
          [this] { return LoadTracker(configuration_, path_); })) {}

std::vector<std::string> LiveEngine::Warnings() const {
  std::vector<std::string> warnings;
  const char* const why = WhyIgnored(loaded_.state);
  // That there is no file yet is no fault.
  if (why != nullptr && loaded_.state != DataFileState::NotOpened) {
    warnings.push_back(NarrowToUtf8(path_) + ": ignored: " + why);
  }
  if (!ReadFeatureEnabled()) {
    warnings.emplace_back("the feature is off, so the service does none of this");
  }
  if (!ReadPredictionsEnabled()) {
    warnings.emplace_back("DisablePrediction is 1, so the service does none of this");
  }
  return warnings;
}

AsOf LiveEngine::CatchUp(const UnsavedLearning& unsaved) {
  AsOf asOf = {false, std::nullopt, 0, unsaved.why};
  if (loaded_.state == DataFileState::Loaded) asOf.saved = TimeOfLast(*loaded_.tracker.GetData());
  const auto events = unsaved.learning.After(asOf.saved);
  asOf.isNow = asOf.why.empty() && events;
  if (asOf.isNow) {
    for (const TimeLineEvent& event : *events) {
      asOf.since += Learns(loaded_.tracker, event) ? 1 : 0;
    }
    return asOf;
  }
  if (asOf.why.empty()) asOf.why = kLogTooShort;
  if (const char* const ignored = WhyIgnored(loaded_.state)) {
    throw CommandFailure(ExitCode::NothingLearnt,
                         NarrowToUtf8(path_) + ": ignored: " + ignored + UnknownLearningText(asOf));
  }
  return asOf;
}

void RequireReadableData() {
  std::wstring folder = DataFolderPath();
  if (folder.empty()) return;
  const std::wstring files[] = {folder + kDataFileName, folder + kHistoryFileName};
  folder.pop_back();
  if (IsReadingDenied(folder) || std::ranges::any_of(files, IsReadingDenied)) {
    throw CommandFailure(ExitCode::NotDone,
                         "only administrators may read what was learnt; try it as administrator");
  }
}

std::string EngineProblem() {
  try {
    const LiveEngine engine;
    return {};
  } catch (const std::exception& error) {
    return error.what();
  }
}

}  // namespace dozewell::ctl
