#include "common/machine_identity.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "base/numbers.h"
#include "common/format_text.h"
#include "common/local_time.h"
#include "common/predictor_keys.h"
#include "common/text.h"

namespace dozewell {
namespace {

constexpr const char* kIdentityKey = "identity";

// The hash FNV-1a of 64 bits.
uint64_t HashOf(std::string_view text) {
  uint64_t hash = 0xcbf29ce484222325;
  for (const char c : text) {
    hash ^= static_cast<unsigned char>(c);
    hash *= 0x100000001b3;
  }
  return hash;
}

std::optional<tm> ValidTime(int64_t seconds) {
  tm time;
  return TmFromSeconds(seconds, time) ? std::optional(time) : std::nullopt;
}

bool IsListOfObjects(const Json& document) {
  return document.is_array() &&
         std::ranges::all_of(document, [](const Json& item) { return item.is_object(); });
}

}  // namespace

std::string SettingsMark(IConfigurations& configuration, bool isPredictionDisabled) {
  std::string settings = std::to_string(configuration.GetTimeResolution()) +
                         (configuration.IsDynamicHAEnabled() ? " dynamic" : "") +
                         (isPredictionDisabled ? " disabled" : "");
  for (const char* const key : kPredictorKeys) {
    settings += '\n';
    settings += TrimBlanks(InOneLine(configuration.GetValue(kPredictorSection, key)));
  }
  return FormatText("%016llx", static_cast<unsigned long long>(HashOf(settings)));
}

std::optional<tm> TimeOfLast(std::span<const HistoryRecord> records) {
  return records.empty() ? std::nullopt : ValidTime(TruncateToInt64(records.back().time));
}

std::optional<tm> TimeOfLast(const TrackerData& data) {
  return data.lastTime.tm_year == kNone ? std::nullopt : ValidTime(SecondsFromTm(data.lastTime));
}

Json IdentityJson(const MachineIdentity& identity) {
  return {{"name", OptionalJson(identity.name)},
          {"version", identity.version},
          {"settings", OptionalJson(identity.settings)},
          {"zone", OptionalJson(identity.zone)},
          {"time", identity.time ? Json(FormatLocalTime(*identity.time)) : Json()}};
}

std::string IdentifiedLine(Json document, const MachineIdentity& identity) {
  if (document.is_object()) document[kIdentityKey] = IdentityJson(identity);
  if (identity.name && IsListOfObjects(document)) {
    for (Json& item : document) item[kIdentityKey] = IdentityJson(identity);
  }
  return JsonLine(document);
}

std::string IdentityComment(const MachineIdentity& identity) {
  if (!identity.name) return {};
  return "# " + JsonLine(IdentityJson(identity));
}

std::string IdentityText(const MachineIdentity& identity) {
  std::string text;
  const auto add = [&text](const char* what, const std::optional<std::string>& value) {
    if (value) text += (text.empty() ? "" : "; ") + (what + *value);
  };
  add("", identity.name);
  add("zone ", identity.zone);
  if (identity.time) add("data to ", WithBlank(FormatLocalTime(*identity.time)));
  add("settings ", identity.settings);
  add("version ", identity.version);
  return text;
}

}  // namespace dozewell
