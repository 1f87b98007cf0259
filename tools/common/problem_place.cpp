#include "common/problem_place.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "base/numbers.h"
#include "base/utf8.h"
#include "prediction/cycle_shape.h"
#include "prediction/tracker_data.h"
#include "settings/setting_names.h"

namespace dozewell {
namespace {

// A number that the engine needs, and the one that it cannot use.
struct NeededNumber {
  const char* key;
  int32_t unusable;
};
constexpr NeededNumber kNeededNumbers[] = {{kDaysInCycleName, 0},
                                           {kMinutesInDayName, 0},
                                           {kFirstLastWeightName, kNone},
                                           {kSecondLastWeightName, kNone},
                                           {kAgregationWeightName, kNone}};

constexpr const char* kWeightRanges[] = {kFirstLastWeightRangeName, kSecondLastWeightRangeName};

void AddToList(const std::string& item, std::string& list) {
  if (!list.empty()) list += ", ";
  list += item;
}

std::string TimeResolutionIs(int32_t minutes) {
  return NarrowToUtf8(kTimeResolutionName) + " is " + std::to_string(minutes);
}

std::string MissingText(const std::vector<std::string>& keys) {
  std::string list;
  for (const std::string& key : keys) AddToList(key, list);
  return list + (keys.size() == 1 ? " is missing" : " are missing");
}

std::string UnusableNumbers(IConfigurations& configuration) {
  std::vector<std::string> missing;
  std::string list;
  const uint32_t resolution = configuration.GetTimeResolution();
  const auto minutes = static_cast<int32_t>(resolution);
  if (resolution == kNoTimeResolution) {
    missing.push_back(NarrowToUtf8(kTimeResolutionName));
  } else if (minutes <= 0) {
    AddToList(TimeResolutionIs(minutes), list);
  }
  for (const auto& [key, unusable] : kNeededNumbers) {
    const std::string value = configuration.GetValue(kPredictorSection, key);
    if (value.empty()) {
      missing.emplace_back(key);
    } else if (Atoi(value) == unusable) {
      AddToList(std::string(key) + " is " + value, list);
    }
  }
  if (!missing.empty()) AddToList(MissingText(missing), list);
  return list;
}

// What is wrong with a cycle whose numbers are all there.
std::string UnusableCycle(const CycleShape& shape) {
  if (shape.minutesInDay % shape.minutesPerSlot != 0) {
    return TimeResolutionIs(shape.minutesPerSlot) + ", which does not divide " + kMinutesInDayName +
           ", " + std::to_string(shape.minutesInDay);
  }
  if (shape.IsUsable()) return {};
  return NarrowToUtf8(kTimeResolutionName) + ", " + kMinutesInDayName + " and " + kDaysInCycleName +
         " make no cycle";
}

}  // namespace

std::string PlaceOfProblem(IConfigurations& configuration, const EngineSources& sources) {
  std::string wrong = UnusableNumbers(configuration);
  if (wrong.empty()) wrong = UnusableCycle(ReadCycleShape(configuration));
  return wrong.empty() ? sources.data : sources.settings + ": " + wrong;
}

std::string PlaceOfSearchProblem(IConfigurations& configuration, const EngineSources& sources) {
  std::string wrong;
  for (const char* const key : kWeightRanges) {
    const auto numbers = ReadPredictorNumbers(configuration, key);
    if (std::ranges::find(numbers, kNone) != numbers.end()) {
      AddToList(std::string(key) + " holds " + std::to_string(kNone), wrong);
    }
  }
  return wrong.empty() ? sources.data : sources.settings + ": " + wrong;
}

}  // namespace dozewell
