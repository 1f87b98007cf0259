#include "fleet/question.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "base/wall_clock.h"
#include "common/tool_error.h"

namespace dozewell::fleet {
namespace {

// The kinds as partial results write them.
constexpr std::pair<WalkedKind, const char*> kKinds[] = {
    {WalkedKind::Fixed, "fixed"},
    {WalkedKind::Settings, "settings"},
    {WalkedKind::BestFixed, "best fixed"},
    {WalkedKind::PastFixed, "past fixed"},
    {WalkedKind::Service, "service"},
    {WalkedKind::ServiceWithoutWake, "service without wake"},
    {WalkedKind::Rates, "rates"},
    {WalkedKind::RatesWithoutWake, "rates without wake"},
    {WalkedKind::Clairvoyant, "clairvoyant"},
};

Json KindJson(std::optional<WalkedKind> kind) {
  if (!kind) return nullptr;
  return std::ranges::find(kKinds, *kind, &std::pair<WalkedKind, const char*>::first)->second;
}

std::optional<WalkedKind> KindOf(const Json& json) {
  if (json.is_null()) return std::nullopt;
  const auto* const found =
      std::ranges::find_if(kKinds, [&json](const auto& entry) { return json == entry.second; });
  if (found == std::end(kKinds)) throw ToolError("no kind of choice: " + json.dump());
  return found->first;
}

template <typename Number>
std::optional<Number> OptionalOf(const Json& json) {
  return json.is_null() ? std::nullopt : std::optional(json.get<Number>());
}

FleetChoice ChoiceOf(const Json& json) {
  return {json.at("name").get<std::string>(), KindOf(json.at("kind")),
          OptionalOf<size_t>(json.at("strength")),
          OptionalOf<int64_t>(json.at("hibernateAfterMinutes"))};
}

}  // namespace

std::optional<size_t> FleetQuestion::Find(WalkedKind kind,
                                          std::optional<size_t> strengthOfIt) const {
  const auto found = std::ranges::find_if(choices, [&](const FleetChoice& choice) {
    return choice.kind == kind && choice.strength == strengthOfIt;
  });
  if (found == choices.end()) return std::nullopt;
  return static_cast<size_t>(found - choices.begin());
}

size_t FleetQuestion::Own() const {
  const auto found = std::ranges::find_if(choices, [&](const FleetChoice& choice) {
    return choice.kind == WalkedKind::Fixed &&
           choice.hibernateAfterMinutes == userTimeoutSeconds / kSecondsPerMinute;
  });
  if (found == choices.end()) throw ToolError("the user's own timeout is not among the choices");
  return static_cast<size_t>(found - choices.begin());
}

Json QuestionJson(const FleetQuestion& question) {
  Json choices = Json::array();
  for (const auto& [name, kind, strength, minutes] : question.choices) {
    choices.push_back({{"name", name},
                       {"kind", KindJson(kind)},
                       {"strength", OptionalJson(strength)},
                       {"hibernateAfterMinutes", OptionalJson(minutes)}});
  }
  return {{"version", question.version},
          {"settings", question.settings},
          {"searches", Json::array({question.habits.intervalDays, question.habits.delayMinutes,
                                    question.habits.historyLimitDays})},
          {"userTimeoutSeconds", question.userTimeoutSeconds},
          {"weights", question.weights},
          {"strength", question.strength},
          {"part", Json::array({question.part.number, question.part.of})},
          {"choices", choices}};
}

FleetQuestion QuestionOf(const Json& json) {
  FleetQuestion question;
  json.at("version").get_to(question.version);
  json.at("settings").get_to(question.settings);
  const Json& habits = json.at("searches");
  question.habits = {habits.at(0).get<uint32_t>(), habits.at(1).get<uint32_t>(),
                     habits.at(2).get<uint32_t>()};
  json.at("userTimeoutSeconds").get_to(question.userTimeoutSeconds);
  json.at("weights").get_to(question.weights);
  json.at("strength").get_to(question.strength);
  const Json& part = json.at("part");
  question.part = {part.at(0).get<int64_t>(), part.at(1).get<int64_t>()};
  constexpr int64_t kMostParts = 100000;
  if (question.part.number < 1 || question.part.number > question.part.of ||
      question.part.of > kMostParts) {
    throw ToolError("no such part");
  }
  for (const Json& choice : json.at("choices")) question.choices.push_back(ChoiceOf(choice));
  static_cast<void>(question.Own());
  return question;
}

}  // namespace dozewell::fleet
