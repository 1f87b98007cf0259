#ifndef DOZEWELL_FLEET_MACHINE_ROW_H_
#define DOZEWELL_FLEET_MACHINE_ROW_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "optimizer/simulator/sim_time_line.h"

namespace dozewell::fleet {

// The thousandths of a score that 95 of 100 draws of the history's weeks lie between.
struct ScoreBounds {
  int64_t low;
  int64_t high;

  bool operator==(const ScoreBounds&) const = default;
};

// What became of one machine's history.
struct MachineRow {
  std::string path;         // of the history
  std::string reason = {};  // why it could not be judged; empty for one that was
  std::string damage = {};  // what is wrong with one that was judged as far as it can be read
  int64_t records = 0;
  // Of the first and the last record, in wall-clock seconds; 0 without a record.
  int64_t from = 0;
  int64_t to = 0;
  std::optional<ScoreBounds> bounds = {};  // of the service with the strength in force
  std::vector<Outcomes> outcomes = {};     // of each choice; empty when there is a reason

  bool operator==(const MachineRow&) const = default;
};

// What people call the machine of a history: the folder that a zs7state.dat is in, beyond those
// that the service keeps it in, and the name of any other file without its extension.
std::string MachineName(std::string_view path);

}  // namespace dozewell::fleet

#endif  // DOZEWELL_FLEET_MACHINE_ROW_H_
