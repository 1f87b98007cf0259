#ifndef DOZEWELL_FLEET_QUESTION_H_
#define DOZEWELL_FLEET_QUESTION_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "common/json.h"
#include "walk/search_calendar.h"
#include "walk/walk_forward.h"

namespace dozewell::fleet {

// A way to spend the sleeps of every machine, as compare names it.
struct FleetChoice {
  std::string name;
  std::optional<WalkedKind> kind = {};  // of one that is walked forward
  std::optional<size_t> strength = {};
  std::optional<int64_t> hibernateAfterMinutes = {};  // of a timeout; 0 is never

  bool operator==(const FleetChoice&) const = default;
};

// Which of several parts of all machines is judged: the `number`-th of `of`, from 1 on.
struct FleetPart {
  int64_t number = 1;
  int64_t of = 1;

  bool operator==(const FleetPart&) const = default;
};

// What is asked about each machine. Results can be added up when all of this but the part is the
// same.
struct FleetQuestion {
  std::string version;   // of the program that judges
  std::string settings;  // a text that differs when the settings do
  SearchHabits habits;
  int64_t userTimeoutSeconds = 0;  // 0 is never
  std::vector<int32_t> weights;    // by strength
  size_t strength = 0;             // the one that the settings choose
  std::vector<FleetChoice> choices;
  FleetPart part;

  bool operator==(const FleetQuestion&) const = default;

  // The position of the choice of this kind and strength; nothing when there is none.
  std::optional<size_t> Find(WalkedKind kind, std::optional<size_t> strengthOfIt = {}) const;
  // The position of the user's own timeout.
  size_t Own() const;
};

Json QuestionJson(const FleetQuestion& question);

// The inverse. Throws what the JSON library throws, and ToolError, when this is no question.
FleetQuestion QuestionOf(const Json& json);

}  // namespace dozewell::fleet

#endif  // DOZEWELL_FLEET_QUESTION_H_
