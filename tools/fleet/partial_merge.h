#ifndef DOZEWELL_FLEET_PARTIAL_MERGE_H_
#define DOZEWELL_FLEET_PARTIAL_MERGE_H_

#include <deque>
#include <optional>
#include <span>
#include <string>

#include "fleet/machine_row.h"
#include "fleet/partial_file.h"
#include "fleet/question.h"

namespace dozewell::fleet {

// The machines of several partial results, in the order of their paths.
class PartialMerge {
 public:
  // Throws ToolError when the files ask different questions, and when of a run in several parts one
  // is missing or there twice.
  explicit PartialMerge(std::span<const std::string> names);

  // What all of them ask, as one part.
  const FleetQuestion& Question() const { return question_; }

  // The next machine; nothing after the last one. Throws ToolError for a machine that is in two
  // files and for a file without its end.
  std::optional<MachineRow> Next();

 private:
  struct Source {
    PartialReader reader;
    std::optional<MachineRow> next;
  };
  static void Advance(Source& source);

  FleetQuestion question_;
  std::deque<Source> sources_;
};

}  // namespace dozewell::fleet

#endif  // DOZEWELL_FLEET_PARTIAL_MERGE_H_
