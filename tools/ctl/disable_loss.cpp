#include "ctl/disable_loss.h"

#include <optional>

#include "base/durable_file.h"
#include "common/local_time.h"
#include "ctl/live_files.h"
#include "prediction/cyclic_probability_predictor.h"

namespace dozewell::ctl {
namespace {

// How far the saved data go; empty when that cannot be told.
std::string ExtentOfSavedData() {
  if (ReadDurableFile(LiveFilePath(kDataFileName)).failure == FileFailure::Missing) {
    return "; nothing is saved yet";
  }
  const std::optional<tm> last = TimeOfSavedData();
  return last ? "; what is saved ends at " + WithBlank(FormatLocalTime(*last)) : "";
}

}  // namespace

std::string DisableLossText() {
  return "The service will lose what it has learnt since it last saved that" + ExtentOfSavedData() +
         ". To keep it, run net stop DozewellService, which saves it, and net start "
         "DozewellService first, as administrator.";
}

}  // namespace dozewell::ctl
