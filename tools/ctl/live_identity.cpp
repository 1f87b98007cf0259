#include "ctl/live_identity.h"

#include "ctl/live_files.h"
#include "ctl/live_settings.h"
#include "ctl/machine_name.h"
#include "ctl/time_zone.h"
#include "prediction/configurations_impl.h"

namespace dozewell::ctl {

MachineIdentity LiveIdentity() {
  ConfigurationsImpl configuration;
  MachineIdentity identity;
  identity.name = ReadMachineName();
  identity.settings = SettingsMark(configuration, !ReadPredictionsEnabled());
  if (const std::optional<Zone> zone = ReadZone()) identity.zone = zone->name;
  identity.time = TimeOfSavedData();
  return identity;
}

MachineIdentity LiveIdentity(const std::optional<tm>& last) {
  MachineIdentity identity = LiveIdentity();
  identity.time = last;
  return identity;
}

std::string LiveLine(const Json& document) { return IdentifiedLine(document, LiveIdentity()); }

}  // namespace dozewell::ctl
