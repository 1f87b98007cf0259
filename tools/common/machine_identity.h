#ifndef DOZEWELL_COMMON_MACHINE_IDENTITY_H_
#define DOZEWELL_COMMON_MACHINE_IDENTITY_H_

#include <optional>
#include <span>
#include <string>

#include "base/wall_clock.h"
#include "common/json.h"
#include "common/version.h"
#include "prediction/configurations.h"
#include "prediction/history_file.h"
#include "prediction/tracker_data.h"

namespace dozewell {

// Which machine an answer is about, and what it rests on. It stands in every page, JSON document
// and CSV, in the same words. What is not known is nothing.
struct MachineIdentity {
  std::optional<std::string> name = std::nullopt;
  std::string version = kVersion;                      // of the program that answers
  std::optional<std::string> settings = std::nullopt;  // a SettingsMark
  std::optional<std::string> zone = std::nullopt;      // as Windows names the machine's time zone
  std::optional<tm> time = std::nullopt;               // local, of the last event in the data
};

// 16 hexadecimal digits that are the same for the same settings, wherever they were read, and
// otherwise differ. They cover what predictions and searches depend on, but not the results of
// searches.
std::string SettingsMark(IConfigurations& configuration, bool isPredictionDisabled);

// The time of the last record or of the last event that was learnt; nothing when there is none.
std::optional<tm> TimeOfLast(std::span<const HistoryRecord> records);
std::optional<tm> TimeOfLast(const TrackerData& data);

Json IdentityJson(const MachineIdentity& identity);

// The document in one line, with the identity as its last key. Where it is a list of objects, each
// of them has it if the machine has a name; a list of anything else stays as it is.
std::string IdentifiedLine(Json document, const MachineIdentity& identity);

// The first line of a CSV: a comment with the identity as JSON; nothing if the machine has no name.
std::string IdentityComment(const MachineIdentity& identity);

// What is known, for people: "OFFICE-7; zone W. Europe Standard Time; data to 2026-11-21 09:05;
// settings 0123456789abcdef; version 0.1.0".
std::string IdentityText(const MachineIdentity& identity);

}  // namespace dozewell

#endif  // DOZEWELL_COMMON_MACHINE_IDENTITY_H_
