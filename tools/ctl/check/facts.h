#ifndef DOZEWELL_CTL_CHECK_FACTS_H_
#define DOZEWELL_CTL_CHECK_FACTS_H_

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "ctl/check/access_list.h"
#include "ctl/check/nights.h"
#include "ctl/check/service_configuration.h"
#include "ctl/check/service_token.h"
#include "ctl/check/system_facts.h"
#include "ctl/controller_outlook.h"
#include "ctl/machine_kind.h"
#include "ctl/service_calls.h"
#include "ctl/service_query.h"
#include "ctl/time_zone.h"

namespace dozewell::ctl {

// Everything that a check looks at. Plain data: tests make up machines of it.

struct SettingsFacts {
  bool featureEnabled;
  bool predictionsEnabled;
  std::optional<uint32_t> currentAttempt;
  std::optional<uint32_t> totalAttempts;
  std::string engineProblem;  // why the engine cannot be built; empty when it can
  int32_t strength;
  bool strengthHasResult;
  ControllerOutlook controller;
  // The user's own timeouts that a prediction has taken the place of, in minutes, by kPowerSourceAC
  // and its like.
  std::array<std::optional<uint32_t>, 2> cachedHibernateAfter;
};

struct EventSourceFacts {
  std::optional<std::string> messageFile;  // nothing when the source is not registered
  uint32_t textError;  // the system's, when the file has no text for the service's events
};

struct NightFacts {
  uint32_t systemError;   // the system's, when its log could not be read
  uint32_t serviceError;  // when the service's events could not be read
  bool hasServiceEvents;
  Nights nights;
};

struct CheckFacts {
  std::optional<SystemVersion> version;
  std::optional<bool> isAdministrator;
  MachineKind machine;
  std::array<SettingInForce, 2> sleepAfter;
  std::optional<bool> isSchemeUnderPolicy;
  std::optional<std::string> activeScheme;
  ServiceQuery service;
  ServiceConfiguration configuration;
  PathAccess program;                 // of the service
  std::optional<ServiceToken> token;  // of a running service
  CallResult ping;
  std::optional<uint32_t> pipeServer;  // the process that answers
  AccessList pipe;
  SettingsFacts settings;
  std::vector<PathAccess> dataPaths;  // folders and files, the outermost first
  EventSourceFacts eventSource;
  std::optional<Zone> zone;
  std::optional<std::string> zoneVariable;  // TZ of the whole machine
  NightFacts lastNights;
};

// Reads all of it on this machine, and changes nothing.
CheckFacts GatherFacts();

// How many days the last nights reach back.
inline constexpr uint32_t kNightDays = 7;

}  // namespace dozewell::ctl

#endif  // DOZEWELL_CTL_CHECK_FACTS_H_
