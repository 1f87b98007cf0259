#include "ctl/power_reading.h"

#include <cstddef>
#include <cstdio>
#include <iterator>
#include <vector>

namespace dozewell::ctl {
namespace {

constexpr const char* kNotRead = "not available";

std::string Row(const char* name, std::span<const std::string> cells) {
  char text[64];
  std::snprintf(text, std::size(text), "  %-17s", name);
  std::string row = text;
  for (const std::string& cell : cells) {
    std::snprintf(text, std::size(text), " %-19s", cell.c_str());
    row += text;
  }
  row.resize(row.find_last_not_of(' ') + 1);
  return row + "\n";
}

std::string Json(const PowerReading& reading) {
  std::string json;
  for (size_t i = 0; i < kPowerSettings.size(); ++i) {
    const auto& value = reading.values[i];
    json += (i == 0 ? "{\"" : ",\"") + std::string(kPowerSettings[i].jsonName) +
            "\":" + (value ? std::to_string(*value) : "null");
  }
  return json + "}";
}

}  // namespace

PowerReading ReadPower(uint32_t source) {
  PowerReading reading = {};
  bool anyDone = false;
  for (size_t i = 0; i < kPowerSettings.size(); ++i) {
    PowerTimeouts timeouts = {};
    reading.result = CallGetPowerSettings(kPowerSettings[i].mask, source, timeouts);
    if (reading.result.outcome == CallOutcome::Unreachable) return reading;
    if (!reading.result.IsDone()) continue;
    reading.values[i] = timeouts.*kPowerSettings[i].field;
    anyDone = true;
  }
  if (anyDone) reading.result = {CallOutcome::Done, 0};
  return reading;
}

std::string PowerTable(std::span<const NamedNumber> sources,
                       std::span<const PowerReading> readings) {
  std::vector<std::string> cells;
  for (const NamedNumber& source : sources) cells.emplace_back(source.name);
  std::string table = Row("", cells);
  for (size_t i = 0; i < kPowerSettings.size(); ++i) {
    cells.clear();
    for (const PowerReading& reading : readings) {
      const auto& value = reading.values[i];
      cells.push_back(value ? PowerValueText(kPowerSettings[i], *value) : kNotRead);
    }
    table += Row(kPowerSettings[i].name, cells);
  }
  return table;
}

std::string PowerJson(std::span<const NamedNumber> sources,
                      std::span<const PowerReading> readings) {
  std::string json;
  for (size_t i = 0; i < sources.size(); ++i) {
    json += (i == 0 ? "{\"" : ",\"") + std::string(sources[i].name) + "\":" + Json(readings[i]);
  }
  return json + "}";
}

}  // namespace dozewell::ctl
