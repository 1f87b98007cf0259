#include <cstdint>
#include <limits>
#include <string>

#include "common/json.h"
#include "common/option_text.h"
#include "common/text.h"
#include "ctl/command_failure.h"
#include "ctl/commands.h"
#include "ctl/live_identity.h"
#include "ctl/live_settings.h"
#include "ctl/require_done.h"
#include "ctl/service_calls.h"

namespace dozewell::ctl {
namespace {

int32_t ParseStrength(const std::string& text) {
  const auto strength = ParseNumber<int32_t>(text);
  if (strength && *strength >= 0) return *strength;
  throw CommandFailure(
      ExitCode::Usage,
      WrongValue("STRENGTH",
                 "a whole number from 0 to " + std::to_string(std::numeric_limits<int32_t>::max()),
                 text));
}

void ShowStrength(int32_t strength, const char* sentence, const Options& options,
                  const Console& console) {
  console.print(options.json ? LiveLine({{"strength", strength}})
                             : sentence + std::to_string(strength) + ".\n");
}

}  // namespace

void RunStrengthGet(const Options& options, const Console& console) {
  int32_t strength = 0;
  RequireDone(CallGetStrength(strength), "the service could not read the strength");
  ShowStrength(strength, "The strength is ", options, console);
}

void RunStrengthSet(const Options& options, const Console& console) {
  const int32_t strength = ParseStrength(options.strength.value());
  RequireDone(CallSetStrength(strength), "the service could not store the strength");
  if (!StrengthHasResult(strength)) {
    console.warn("warning: the optimizer has stored nothing for strength " +
                 std::to_string(strength) + " yet");
  }
  ShowStrength(strength, "The strength is now ", options, console);
}

void RunResetHistory(const Options& options, const Console& console) {
  if (!options.yes && !console.confirm("The service will forget all that it has learnt. Go on?")) {
    throw CommandFailure(ExitCode::NotDone, "nothing was reset");
  }
  RequireDone(CallResetHistory(),
              "the history was not reset, since the controller does not run; dozewellctl status "
              "shows why");
  console.print(options.json ? LiveLine({{"reset", true}})
                             : "The service has been told to forget.\n");
}

}  // namespace dozewell::ctl
