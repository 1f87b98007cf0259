#include "fleet/partial_merge.h"

#include <cstdint>
#include <map>
#include <utility>

#include "common/tool_error.h"

namespace dozewell::fleet {
namespace {

FleetQuestion AsOnePart(FleetQuestion question) {
  question.part = {};
  return question;
}

std::string PartText(const FleetPart& part) {
  return "part " + std::to_string(part.number) + " of " + std::to_string(part.of);
}

// Several runs in equally many parts are fine; a part that is missing or one too many is not.
void RequireAllParts(const std::map<std::pair<int64_t, int64_t>, int>& count) {
  for (const auto& [part, times] : count) {
    const auto& [of, number] = part;
    for (int64_t other = 1; other <= of; ++other) {
      const auto found = count.find({of, other});
      if (found == count.end()) {
        throw ToolError(PartText({other, of}) + " is missing");
      }
      if (found->second < times) {
        throw ToolError(PartText({number, of}) + " is there more often than " +
                        PartText({other, of}));
      }
    }
  }
}

}  // namespace

PartialMerge::PartialMerge(std::span<const std::string> names) {
  std::map<std::pair<int64_t, int64_t>, int> parts;
  for (const std::string& name : names) {
    Source& source = sources_.emplace_back(Source{PartialReader(name), std::nullopt});
    const FleetQuestion& asked = source.reader.Question();
    if (sources_.size() == 1) question_ = AsOnePart(asked);
    if (AsOnePart(asked) != question_) {
      throw ToolError(name +
                      ": was made with other settings, another timeout or another version "
                      "than " +
                      names.front());
    }
    ++parts[{asked.part.of, asked.part.number}];
  }
  RequireAllParts(parts);
  for (Source& source : sources_) Advance(source);
}

void PartialMerge::Advance(Source& source) {
  source.next = source.reader.Next();
  if (!source.next && !source.reader.IsComplete()) {
    throw ToolError(source.reader.Name() +
                    ": its end is missing; the run was stopped, and goes on with --resume");
  }
}

std::optional<MachineRow> PartialMerge::Next() {
  Source* first = nullptr;
  for (Source& source : sources_) {
    if (!source.next) continue;
    if (first != nullptr && source.next->path == first->next->path) {
      throw ToolError(source.reader.Name() + ": " + source.next->path + " is in " +
                      first->reader.Name() + " too");
    }
    if (first == nullptr || source.next->path < first->next->path) first = &source;
  }
  if (first == nullptr) return std::nullopt;
  std::optional<MachineRow> row = std::move(first->next);
  Advance(*first);
  return row;
}

}  // namespace dozewell::fleet
