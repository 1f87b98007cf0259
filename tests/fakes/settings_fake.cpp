#include "fakes/settings_fake.h"

#include <algorithm>
#include <cstring>
#include <functional>

#include "base/numbers.h"
#include "base/utf8.h"
#include "fakes/journal.h"
#include "settings/data_folder.h"
#include "settings/predictor_values.h"
#include "settings/setting_names.h"
#include "settings/settings_store.h"

namespace dozewell {
namespace fakes {

Settings settings;

namespace {

template <typename Number>
Value MakeValue(ValueType type, Number number) {
  Value value{type, std::vector<uint8_t>(sizeof(number))};
  std::memcpy(value.data.data(), &number, sizeof(number));
  return value;
}

template <typename Number>
bool Take(const Value& value, Number& number) {
  if (value.data.size() > sizeof(number)) return false;
  number = 0;
  std::copy(value.data.begin(), value.data.end(), reinterpret_cast<uint8_t*>(&number));
  return true;
}

template <typename Number>
bool Query(const Key& key, const std::wstring& name, Number& number) {
  const auto found = key.values.find(name);
  return found != key.values.end() && Take(found->second, number);
}

bool QueryFallbackKeys(const std::function<bool(const Key&)>& query) {
  if (!settings.branding.Exists()) BrandingPresent = false;
  return (BrandingPresent && query(settings.branding)) || query(settings.defaults);
}

bool SettingsCallFails(const std::string& call) {
  settings.calls.push_back(call);
  if (!call.starts_with("ReadPredictorValue ")) journal.push_back("settings: " + call);
  return settings.failer.Fails();
}

std::string ToText(const Value& value) {
  if (value.type == ValueType::kText) {
    return {value.data.begin(), std::find(value.data.begin(), value.data.end(), 0)};
  }
  int32_t number = 0;
  if (value.type != ValueType::kNumber32 || !Take(value, number)) return {};
  const std::string text = std::to_string(number);
  return text.size() <= 9 ? text : std::string();
}

}  // namespace

Value Number32(uint32_t number) { return MakeValue(ValueType::kNumber32, number); }
Value Number64(int64_t number) { return MakeValue(ValueType::kNumber64, number); }
Value Text(const std::string& text) {
  const char* const begin = text.c_str();
  return {ValueType::kText, std::vector<uint8_t>(begin, begin + text.size() + 1)};
}

void ResetSettings() {
  settings = {};
  BrandingPresent = true;
}

}  // namespace fakes

using fakes::settings;

bool ReadSetting(const wchar_t* name, uint32_t& value, bool deleteAfterRead) {
  const std::wstring wideName = name != nullptr ? name : L"";
  const char* const suffix = deleteAfterRead ? " delete" : "";
  if (fakes::SettingsCallFails("ReadSetting " + NarrowToUtf8(wideName) + suffix) ||
      wideName.empty()) {
    return false;
  }
  const auto query = [&](const fakes::Key& key) { return fakes::Query(key, wideName, value); };
  const bool found = query(settings.current);
  if (deleteAfterRead) settings.current.values.erase(wideName);
  return found || fakes::QueryFallbackKeys(query);
}

bool ReadDefaultSetting(const wchar_t* name, uint32_t& value) {
  const std::wstring wideName = name != nullptr ? name : L"";
  if (fakes::SettingsCallFails("ReadDefaultSetting " + NarrowToUtf8(wideName)) ||
      wideName.empty()) {
    return false;
  }
  return fakes::QueryFallbackKeys(
      [&](const fakes::Key& key) { return fakes::Query(key, wideName, value); });
}

bool WriteSetting(const wchar_t* name, uint32_t value) {
  const std::wstring wideName = name != nullptr ? name : L"";
  if (fakes::SettingsCallFails("WriteSetting " + NarrowToUtf8(wideName) + " " +
                               std::to_string(value)) ||
      wideName.empty()) {
    return false;
  }
  settings.current.values[wideName] = fakes::Number32(value);
  return true;
}

bool ReadLastOptimizerRun(int64_t& value) {
  if (fakes::SettingsCallFails("ReadLastOptimizerRun")) return false;
  uint32_t seconds = 0;
  if (fakes::Query(settings.current, kLastOptimizerRunName, value)) return true;
  const bool found = fakes::QueryFallbackKeys(
      [&](const fakes::Key& key) { return fakes::Query(key, kLastOptimizerRunName, seconds); });
  if (found) value = seconds;
  return found;
}

bool WriteLastOptimizerRun(int64_t value) {
  if (fakes::SettingsCallFails("WriteLastOptimizerRun " + std::to_string(value))) return false;
  settings.current.values[kLastOptimizerRunName] = fakes::Number64(value);
  return true;
}

std::string ReadPredictorValue(const std::string& section, const std::string& name) {
  std::string text;
  if (fakes::SettingsCallFails("ReadPredictorValue " + section + " " + name)) return text;
  const auto query = [&](const fakes::Key& key) {
    const auto found = key.predictorValues.find({section, name});
    if (found == key.predictorValues.end()) return false;
    text = fakes::ToText(found->second);
    return true;
  };
  if (!query(settings.current)) fakes::QueryFallbackKeys(query);
  return text;
}

bool WritePredictorValue(const std::string& section, const std::string& name,
                         const std::string& text) {
  if (fakes::SettingsCallFails("WritePredictorValue " + section + " " + name + " " + text))
    return false;
  fakes::Value& value =
      settings.current.predictorValues.try_emplace({section, name}, fakes::Text("")).first->second;
  switch (value.type) {
    case fakes::ValueType::kText:
      value = fakes::Text(text);
      return true;
    case fakes::ValueType::kNumber32:
      value = fakes::Number32(static_cast<uint32_t>(Atoi(text)));
      return true;
    default:
      return false;
  }
}

std::wstring DataFolderPath() {
  return fakes::SettingsCallFails("DataFolderPath") ? std::wstring() : settings.dataFolder;
}

std::wstring GetDataFolder() {
  return fakes::SettingsCallFails("GetDataFolder") ? std::wstring() : settings.dataFolder;
}

}  // namespace dozewell
