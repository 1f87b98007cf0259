#ifndef DOZEWELL_FLEET_PARTIAL_FILE_H_
#define DOZEWELL_FLEET_PARTIAL_FILE_H_

#include <cstdint>
#include <optional>
#include <string>

#include "base/file.h"
#include "fleet/machine_row.h"
#include "fleet/question.h"

namespace dozewell::fleet {

// A partial result: a line of JSON with what is asked, one for each machine in the order of their
// paths, and at the end one with their number. A run that is stopped leaves one without its end.
// All operations throw ToolError.

class PartialReader {
 public:
  // Throws also when the file holds something else.
  explicit PartialReader(std::string name);

  const std::string& Name() const { return name_; }
  const FleetQuestion& Question() const { return question_; }

  // The next machine; nothing after the last one. What a stopped run has left of a line counts as
  // nothing.
  std::optional<MachineRow> Next();

  // After the last machine: whether the end was there.
  bool IsComplete() const { return isComplete_; }
  // After the last machine: the bytes up to there, in whole lines, and whether there are more.
  int64_t WholeBytes() const { return wholeBytes_; }
  bool HasRest() const { return hasRest_; }

 private:
  std::optional<std::string> NextLine();
  // Nothing for the line with the end.
  std::optional<MachineRow> Understand(const std::string& line);

  std::string name_;
  File file_;
  FleetQuestion question_;
  std::string lastPath_;
  int64_t line_ = 0;
  int64_t machines_ = 0;
  int64_t wholeBytes_ = 0;
  bool isComplete_ = false;
  bool hasRest_ = false;
};

class PartialWriter {
 public:
  // Begins a file anew. One that holds something else is left as it is and refused.
  PartialWriter(std::string name, const FleetQuestion& question);
  // Goes on with a file after what a reader has read of it.
  PartialWriter(const PartialReader& read, int64_t machines);

  // Each machine is in the file when this returns, so a run can be stopped at any time.
  void Write(const MachineRow& row);
  void WriteEnd();

 private:
  void WriteLine(const std::string& line);

  std::string name_;
  File file_;
  int64_t machines_ = 0;
};

}  // namespace dozewell::fleet

#endif  // DOZEWELL_FLEET_PARTIAL_FILE_H_
