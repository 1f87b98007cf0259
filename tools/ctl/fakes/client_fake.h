#ifndef DOZEWELL_CTL_FAKES_CLIENT_FAKE_H_
#define DOZEWELL_CTL_FAKES_CLIENT_FAKE_H_

#include <array>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "ctl/service_query.h"
#include "rpc/procedures.h"

namespace dozewell::fakes {

// The error of a call that finds no service (RPC_S_SERVER_UNAVAILABLE).
constexpr uint32_t kServerUnavailable = 1722;

// The machine that the client sees: a running service with a driver and a power scheme, its state
// in the service control manager, and its events.
struct Client {
  uint32_t unreachable = 0;           // the error of every call; 0: the service answers
  std::set<std::string> refused;      // procedures that answer that they failed
  uint32_t missingPowerSettings = 0;  // a mask of those that cannot be read
  std::vector<std::string> calls;     // such as "SetStrength 3", without those that read
  bool featureEnabled = true;
  bool driverEnabled = true;
  std::array<WakeTime, 2> wakeTimes = {};
  std::array<int32_t, 2> wakeCounts = {};
  std::array<PowerTimeouts, 2> power = {};
  uint32_t scheme = 0;
  int32_t strength = 0;

  std::string machineName = "OFFICE-7";
  ctl::ServiceQuery service = {0, 4};
  bool isCalled = false;
  std::set<std::wstring> denied;       // what this user may not read
  std::optional<uint32_t> pipeServer;  // the process that serves the pipe

  uint32_t eventsError = 0;
  std::vector<std::string> events;  // oldest first
  std::vector<std::string> systemLog;
};
extern Client client;

}  // namespace dozewell::fakes

#endif  // DOZEWELL_CTL_FAKES_CLIENT_FAKE_H_
