#include "replay/taken_settings.h"

namespace dozewell::replay {

FileConfigurations TakeSettings(const Options& options, Results& results) {
  FileConfigurations configuration(LoadSettings(options.settings), results.missingSettings);
  const MachineIdentity identity = configuration.Identity();
  if (!results.identity.name) results.identity.name = identity.name;
  results.identity.settings = identity.settings;
  results.identity.zone = identity.zone;
  return configuration;
}

}  // namespace dozewell::replay
