#ifndef DOZEWELL_TESTS_FAKES_SETTINGS_FAKE_H_
#define DOZEWELL_TESTS_FAKES_SETTINGS_FAKE_H_

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "fakes/call_failer.h"
#include "support/calls.h"

namespace dozewell::fakes {

enum class ValueType { kText, kNumber32, kNumber64, kOther };

// Raw bytes under a type, as the registry keeps them.
struct Value {
  ValueType type = ValueType::kOther;
  std::vector<uint8_t> data;

  bool operator==(const Value&) const = default;
};

Value Number32(uint32_t number);
Value Number64(int64_t number);
Value Text(const std::string& text);  // 8-bit, with its terminating zero

// A key exists once something is in it. Names are looked up in their exact case.
struct Key {
  std::map<std::wstring, Value> values;
  std::map<std::pair<std::string, std::string>, Value> predictorValues;  // by section and name

  bool Exists() const { return !values.empty() || !predictorValues.empty(); }
};

// The settings store, the predictor values and the data folder in memory. A failing call does
// nothing and answers false or the empty text.
struct Settings {
  Key current;
  Key branding;
  Key defaults;
  std::wstring dataFolder = L"C:\\ProgramData\\Brevan\\Z7\\";
  CallFailer failer;  // counts the calls of every function
  Calls calls;        // such as "WriteSetting ServiceStatus 1"
};
extern Settings settings;

// An empty store, with BrandingPresent set as in a fresh process.
void ResetSettings();

}  // namespace dozewell::fakes

#endif  // DOZEWELL_TESTS_FAKES_SETTINGS_FAKE_H_
