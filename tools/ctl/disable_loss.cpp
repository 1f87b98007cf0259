#include "ctl/disable_loss.h"

#include <cstring>

#include "base/durable_file.h"
#include "common/local_time.h"
#include "ctl/live_files.h"
#include "prediction/cyclic_probability_predictor.h"
#include "prediction/tracker_data.h"

namespace dozewell::ctl {
namespace {

// How far the saved data go; empty when that cannot be told.
std::string ExtentOfSavedData() {
  const FileContent content = ReadDurableFile(LiveFilePath(kDataFileName));
  if (content.failure == FileFailure::Missing) return "; nothing is saved yet";
  TrackerData header;
  if (content.bytes.size() < sizeof(header)) return {};
  std::memcpy(&header, content.bytes.data(), sizeof(header));
  tm lastEvent;
  if (!TmFromSeconds(SecondsFromTm(header.lastTime), lastEvent)) return {};
  return "; what is saved ends at " + WithBlank(FormatLocalTime(lastEvent));
}

}  // namespace

std::string DisableLossText() {
  return "The service will lose what it has learnt since it last saved that" + ExtentOfSavedData() +
         ". To keep it, run net stop DozewellService, which saves it, and net start "
         "DozewellService first, as administrator.";
}

}  // namespace dozewell::ctl
