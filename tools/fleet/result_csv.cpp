#include <cstddef>
#include <iterator>
#include <string_view>

#include "base/wall_clock.h"
#include "common/local_time.h"
#include "fleet/result_text.h"

namespace dozewell::fleet {
namespace {

constexpr const char* kMachineColumns[] = {"machine", "path",   "records", "from",
                                           "to",      "broken", "damaged"};
constexpr const char* kChoiceColumns[] = {"sleepSeconds",     "hibernateSeconds",
                                          "resumesFromSleep", "resumesFromHibernate",
                                          "kilowattHours",    "cost"};

// As spreadsheets read it. A text that one would take for a formula gets an apostrophe before it.
std::string Cell(std::string_view text) {
  const bool isFormula =
      !text.empty() && std::string_view("=+-@").find(text.front()) != std::string_view::npos;
  std::string cell = isFormula ? "'" : "";
  cell += text;
  if (cell.find_first_of(",\"\r\n") == std::string::npos) return cell;
  std::string quoted = "\"";
  for (const char c : cell) {
    quoted += c;
    if (c == '"') quoted += c;
  }
  return quoted + '"';
}

std::string TimeText(const MachineRow& row, int64_t seconds) {
  tm time;
  return row.records > 0 && TmFromSeconds(seconds, time) ? FormatLocalTime(time) : "";
}

std::string Energy(const EnergyRates& rates, const Outcomes& outcomes) {
  constexpr int kDecimals = 6;
  OutcomeSums sums;
  sums.Add(outcomes);
  return ',' + DecimalText(rates.KilowattHours(sums), kDecimals) + ',' +
         DecimalText(rates.Cost(sums), kDecimals);
}

}  // namespace

std::string CsvHead(const FleetQuestion& question) {
  std::string line;
  for (const char* const column : kMachineColumns) {
    line += std::string(line.empty() ? "" : ",") + column;
  }
  for (const FleetChoice& choice : question.choices) {
    for (const char* const column : kChoiceColumns) {
      line += ',' + Cell(choice.name + ": " + column);
    }
  }
  return line + '\n';
}

std::string CsvLine(const MachineRow& row, const FleetQuestion& question,
                    const EnergyRates& rates) {
  std::string line = Cell(MachineName(row.path)) + ',' + Cell(row.path) + ',' +
                     std::to_string(row.records) + ',' + TimeText(row, row.from) + ',' +
                     TimeText(row, row.to) + ',' + Cell(row.reason) + ',' + Cell(row.damage);
  for (const Outcomes& outcomes : row.outcomes) {
    line += ',' + std::to_string(outcomes.sleepSeconds) + ',' +
            std::to_string(outcomes.hibernateSeconds) + ',' +
            std::to_string(outcomes.resumesFromSleep) + ',' +
            std::to_string(outcomes.resumesFromHibernate) + Energy(rates, outcomes);
  }
  if (row.outcomes.empty()) {
    line.append(question.choices.size() * std::size(kChoiceColumns), ',');
  }
  return line + '\n';
}

}  // namespace dozewell::fleet
