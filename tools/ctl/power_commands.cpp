#include <algorithm>
#include <cstdint>
#include <iterator>
#include <span>
#include <string>
#include <vector>

#include "common/json.h"
#include "common/option_text.h"
#include "ctl/command_failure.h"
#include "ctl/commands.h"
#include "ctl/live_identity.h"
#include "ctl/power_names.h"
#include "ctl/power_reading.h"
#include "ctl/require_done.h"
#include "ctl/service_calls.h"

namespace dozewell::ctl {
namespace {

// Throws CommandFailure with the names for one that is none of them.
uint32_t ParseName(const char* argument, std::span<const NamedNumber> names,
                   const std::string& text) {
  if (const auto number = NumberOf(names, text)) return *number;
  throw CommandFailure(ExitCode::Usage, WrongValue(argument, ListOf(names), text));
}

std::vector<NamedNumber> SelectedSources(const Options& options) {
  std::vector<NamedNumber> sources(std::begin(kSources), std::end(kSources));
  if (options.source) {
    const uint32_t number = ParseName("SOURCE", kSources, *options.source);
    std::erase_if(sources, [number](const NamedNumber& source) { return source.number != number; });
  }
  return sources;
}

const PowerSetting& ParseSetting(const std::string& text) {
  if (const PowerSetting* const setting = FindPowerSetting(text)) return *setting;
  std::vector<NamedNumber> names;
  std::ranges::transform(kPowerSettings, std::back_inserter(names),
                         [](const PowerSetting& setting) {
                           return NamedNumber{setting.name, setting.mask};
                         });
  throw CommandFailure(ExitCode::Usage, WrongValue("SETTING", ListOf(names), text));
}

void ShowScheme(uint32_t scheme, const char* sentence, const Options& options,
                const Console& console) {
  const std::string name = NameOf(kSchemes, scheme);
  console.print(options.json ? LiveLine({{"scheme", name}}) : sentence + name + ".\n");
}

}  // namespace

void RunPowerGet(const Options& options, const Console& console) {
  const std::vector<NamedNumber> sources = SelectedSources(options);
  std::vector<PowerReading> readings;
  for (const NamedNumber& source : sources) {
    readings.push_back(ReadPower(source.number));
    RequireDone(readings.back().result, "the service could not read the active power scheme");
  }
  console.print(options.json ? LiveLine(PowerJson(sources, readings))
                             : PowerTable(sources, readings));
}

void RunPowerSet(const Options& options, const Console& console) {
  const std::string& source = options.source.value();
  const uint32_t sourceNumber = ParseName("SOURCE", kSources, source);
  const PowerSetting& setting = ParseSetting(options.setting.value());
  const auto value = ParsePowerValue(setting, options.value.value());
  if (!value) {
    throw CommandFailure(ExitCode::Usage,
                         WrongValue(setting.name, PowerValueRange(setting), *options.value));
  }
  PowerTimeouts timeouts = {};
  timeouts.*setting.field = *value;
  RequireDone(
      CallSetPowerSettings(setting.mask, sourceNumber, timeouts),
      "the service could not write " + std::string(setting.name) + " into the active power scheme");
  console.print(options.json ? LiveLine({{"source", source}, {setting.jsonName, *value}})
                             : std::string(setting.name) + " for " + source + " is " +
                                   PowerValueText(setting, *value) + ".\n");
}

void RunSchemeGet(const Options& options, const Console& console) {
  uint32_t scheme = 0;
  RequireDone(CallGetActiveScheme(scheme),
              "the active power scheme is not " + ListOf(kSchemes) + ", or could not be read");
  ShowScheme(scheme, "The active power scheme is ", options, console);
}

void RunSchemeSet(const Options& options, const Console& console) {
  const uint32_t scheme = ParseName("SCHEME", kSchemes, options.scheme.value());
  RequireDone(CallSetActiveScheme(scheme), "Windows did not make " + *options.scheme +
                                               " the active power scheme; it may not be there");
  ShowScheme(scheme, "The active power scheme is now ", options, console);
}

}  // namespace dozewell::ctl
