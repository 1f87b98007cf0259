#ifndef DOZEWELL_CTL_FAKES_CHECK_FAKE_H_
#define DOZEWELL_CTL_FAKES_CHECK_FAKE_H_

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "ctl/check/access_list.h"
#include "ctl/check/service_configuration.h"
#include "ctl/check/service_token.h"
#include "ctl/check/system_facts.h"
#include "ctl/time_zone.h"

namespace dozewell::fakes {

// What the system tells a check of a machine on which nothing is wrong.
struct CheckedMachine {
  CheckedMachine();

  // Settings that a policy decides on, such as "AC 9D7815A6-7EE4-497E-8888-515A05F02364", and
  // "scheme"; nothing when the system does not tell of any.
  std::optional<std::set<std::string>> policies = std::set<std::string>();
  // By the last part of the key and the name, such as "Power HiberbootEnabled".
  std::map<std::string, uint32_t> numbers;
  std::map<std::string, std::string> texts;
  std::optional<ctl::SystemVersion> version = ctl::SystemVersion{10, 0, 19045};
  std::optional<bool> isAdministrator = true;
  std::optional<ctl::Zone> zone = ctl::Zone{"W. Europe Standard Time", -60, false};
  ctl::ServiceConfiguration configuration;
  ctl::ServiceToken token = {0, "S-1-5-18", true};
  ctl::AccessList pipe;
  std::map<std::string, ctl::PathAccess> paths;  // by path; others are not there
  uint32_t eventTextError = 0;
};
extern CheckedMachine checked;

// A file or folder that belongs to LocalSystem, which administrators may change and users read.
ctl::PathAccess SafePath(const std::string& path);

}  // namespace dozewell::fakes

#endif  // DOZEWELL_CTL_FAKES_CHECK_FAKE_H_
