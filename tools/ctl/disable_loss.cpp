#include "ctl/disable_loss.h"

#include <cstring>
#include <optional>

#include "base/file.h"
#include "common/local_time.h"
#include "ctl/live_files.h"
#include "prediction/cyclic_probability_predictor.h"
#include "prediction/tracker_data.h"

namespace dozewell::ctl {
namespace {

// The time of the last event that the data file knows of.
std::optional<std::string> EndOfSavedData() {
  const auto content = ReadWholeFile(LiveFilePath(kDataFileName));
  TrackerData header;
  if (!content || content->size() < sizeof(header)) return std::nullopt;
  std::memcpy(&header, content->data(), sizeof(header));
  tm time;
  if (!TmFromSeconds(SecondsFromTm(header.lastTime), time)) return std::nullopt;
  return WithBlank(FormatLocalTime(time));
}

}  // namespace

std::string DisableLossText() {
  const auto end = EndOfSavedData();
  return "The service will lose what it has learnt since it last saved that" +
         (end ? "; what is saved ends at " + *end : std::string()) +
         ". To keep it, run net stop DozewellService, which saves it, and net start "
         "DozewellService first, as administrator.";
}

}  // namespace dozewell::ctl
