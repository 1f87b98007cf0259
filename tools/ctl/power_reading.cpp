#include "ctl/power_reading.h"

#include <cstddef>
#include <vector>

#include "common/format_text.h"

namespace dozewell::ctl {
namespace {

constexpr const char* kNotRead = "not available";

std::string Row(const char* name, std::span<const std::string> cells) {
  std::string row = FormatText("  %-17s", name);
  for (const std::string& cell : cells) row += FormatText(" %-19s", cell.c_str());
  row.resize(row.find_last_not_of(' ') + 1);
  return row + "\n";
}

Json ReadingJson(const PowerReading& reading) {
  Json json;
  for (size_t i = 0; i < kPowerSettings.size(); ++i) {
    json[kPowerSettings[i].jsonName] = OptionalJson(reading.values[i]);
  }
  return json;
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

Json PowerJson(std::span<const NamedNumber> sources, std::span<const PowerReading> readings) {
  Json json;
  for (size_t i = 0; i < sources.size(); ++i) json[sources[i].name] = ReadingJson(readings[i]);
  return json;
}

}  // namespace dozewell::ctl
