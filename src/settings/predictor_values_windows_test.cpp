#include <doctest/doctest.h>

#include <string>

#include "settings/predictor_values.h"
#include "settings/settings_store.h"
#include "support/registry_windows.h"

namespace dozewell {

using namespace support;

namespace {

const std::string kSection = "CyclicProbabilityPredictor";

std::wstring SectionOf(const wchar_t* key) {
  return std::wstring(key) + L"\\Predictors\\CyclicProbabilityPredictor";
}

std::string ReadStrength() { return ReadPredictorValue(kSection, "Strength"); }

}  // namespace

TEST_CASE("a predictor value comes from the first of Current, Branding and Default that has it") {
  const CleanProductKeys clean;
  const wchar_t* const paths[] = {kCurrent, kBranding, kDefault};
  const wchar_t* const texts[] = {L"from Current", L"from Branding", L"from Default"};
  const char* const expected[] = {"",
                                  "from Current",
                                  "from Branding",
                                  "from Current",
                                  "from Default",
                                  "from Current",
                                  "from Branding",
                                  "from Current"};
  // How much of the path to the value exists in the keys that do not have it.
  for (const wchar_t* ending :
       {L"", L"\\Predictors", L"\\Predictors\\CyclicProbabilityPredictor"}) {
    for (int present = 0; present < 8; ++present) {
      CAPTURE(present);
      for (int key = 0; key < 3; ++key) {
        DeleteTree(paths[key]);
        CreateKey(paths[key] + std::wstring(ending));
        if ((present >> key & 1) != 0)
          SetValue(SectionOf(paths[key]), L"Strength", Text(texts[key]));
      }
      CHECK(ReadStrength() == expected[present]);
      CHECK(BrandingPresent);
    }
  }
}

TEST_CASE("a predictor value is found in Default when the other keys do not exist") {
  const CleanProductKeys clean;
  SetValue(SectionOf(kDefault), L"Strength", Text(L"60"));
  CHECK(ReadStrength() == "60");
}

TEST_CASE("a predictor value is empty when no key exists") {
  const CleanProductKeys clean;
  CHECK(ReadStrength() == "");
  CHECK_FALSE(KeyExists(kCurrent));
}

TEST_CASE("looking for a predictor value gives Branding up for good when it fails to open") {
  const CleanProductKeys clean;
  SetValue(SectionOf(kDefault), L"Strength", Text(L"60"));
  CHECK(ReadStrength() == "60");
  CHECK_FALSE(BrandingPresent);
  SetValue(SectionOf(kBranding), L"Strength", Text(L"50"));
  CHECK(ReadStrength() == "60");
  CHECK_FALSE(BrandingPresent);
}

TEST_CASE("sections and names of predictor values are kept apart") {
  const CleanProductKeys clean;
  CHECK(WritePredictorValue("A", "x", "1"));
  CHECK(WritePredictorValue("A", "y", "2"));
  CHECK(WritePredictorValue("B", "x", "3"));
  CHECK(ReadPredictorValue("A", "x") == "1");
  CHECK(ReadPredictorValue("A", "y") == "2");
  CHECK(ReadPredictorValue("B", "x") == "3");
  CHECK(ReadPredictorValue("B", "y") == "");
}

TEST_CASE("a REG_DWORD is read as signed decimal text of at most nine characters") {
  const CleanProductKeys clean;
  struct Row {
    uint32_t number;
    const char* text;
  };
  const Row rows[] = {
      {0, "0"},
      {60, "60"},
      {999999999, "999999999"},
      {1000000000, ""},
      {0x7FFFFFFF, ""},
      {0x80000000, ""},
      {0xFFFFFFFF, "-1"},
      {0u - 99999999, "-99999999"},
      {0u - 100000000, ""},
  };
  for (const Row& row : rows) {
    CAPTURE(row.number);
    SetValue(SectionOf(kDefault), L"Strength", Text(L"hidden"));
    SetValue(SectionOf(kCurrent), L"Strength", Dword(row.number));
    CHECK(ReadStrength() == row.text);
  }
}

TEST_CASE("a REG_DWORD of another length is read as far as four bytes hold it") {
  const CleanProductKeys clean;
  SetValue(SectionOf(kDefault), L"Strength", Text(L"hidden"));
  SetValue(SectionOf(kCurrent), L"Strength", {kRegDword, {0x2C, 0x01}});
  CHECK(ReadStrength() == "300");
  SetValue(SectionOf(kCurrent), L"Strength", {kRegDword, {0x2C, 0x01, 0, 0, 0}});
  CHECK(ReadStrength() == "");
}

TEST_CASE("the type rules hold in the fallback keys, too") {
  const CleanProductKeys clean;
  SetValue(SectionOf(kDefault), L"Strength", Dword(3));
  CHECK(ReadStrength() == "3");
  BrandingPresent = true;
  SetValue(SectionOf(kBranding), L"Strength", Dword(0xFFFFFFFE));
  CHECK(ReadStrength() == "-2");
  SetValue(SectionOf(kBranding), L"Strength", {kRegBinary, {'5', 0}});
  CHECK(ReadStrength() == "");
}

TEST_CASE("a predictor value of another type is empty and hides the fallback keys") {
  const CleanProductKeys clean;
  SetValue(SectionOf(kBranding), L"Strength", Text(L"50"));
  SetValue(SectionOf(kDefault), L"Strength", Text(L"60"));
  for (const RegistryValue& value : {RegistryValue{kRegBinary, {'5', 0}}, Qword(5)}) {
    SetValue(SectionOf(kCurrent), L"Strength", value);
    CHECK(ReadStrength() == "");
  }
}

TEST_CASE("an empty text is a value and hides the fallback keys") {
  const CleanProductKeys clean;
  SetValue(SectionOf(kDefault), L"Strength", Text(L"60"));
  SetValue(SectionOf(kCurrent), L"Strength", Text(L""));
  CHECK(ReadStrength() == "");
}

TEST_CASE("text ends at its first zero or where its data ends") {
  const CleanProductKeys clean;
  SetValue(SectionOf(kCurrent), L"Strength", {kRegSz, {'4', 0, '5', 0}});
  CHECK(ReadStrength() == "45");
  SetValue(SectionOf(kCurrent), L"Strength", Text({L'4', L'\0', L'5'}));
  CHECK(ReadStrength() == "4");
  SetValue(SectionOf(kCurrent), L"Strength", {kRegSz, {}});
  CHECK(ReadStrength() == "");
  SetValue(SectionOf(kCurrent), L"Strength", Text(std::wstring(5000, L'7')));
  CHECK(ReadStrength() == std::string(5000, '7'));
}

TEST_CASE("a predictor value that is absent is written as text, creating its section") {
  const CleanProductKeys clean;
  SetValue(SectionOf(kDefault), L"Strength", Dword(60));
  CHECK(WritePredictorValue(kSection, "Strength", "12abc"));
  CHECK(GetValue(SectionOf(kCurrent), L"Strength") == Text(L"12abc"));
  CHECK(GetValue(SectionOf(kDefault), L"Strength") == Dword(60));
  CHECK(ReadStrength() == "12abc");
}

TEST_CASE("a predictor value that is text stays text with its terminating zero") {
  const CleanProductKeys clean;
  SetValue(SectionOf(kCurrent), L"Strength", Text(L"a longer text than before"));
  CHECK(WritePredictorValue(kSection, "Strength", "7"));
  CHECK(GetValue(SectionOf(kCurrent), L"Strength") == Text(L"7"));
  CHECK(WritePredictorValue(kSection, "Strength", ""));
  CHECK(GetValue(SectionOf(kCurrent), L"Strength") == Text(L""));
}

TEST_CASE("a predictor value that is a REG_DWORD gets the number the text begins with") {
  const CleanProductKeys clean;
  struct Row {
    const char* text;
    uint32_t number;
  };
  const Row rows[] = {
      {"12abc", 12},
      {" 7", 7},
      {"-5", 0xFFFFFFFB},
      {"99999999999", 0x7FFFFFFF},
      {"-99999999999", 0x80000000},
      {"abc", 0},
      {"", 0},
  };
  for (const Row& row : rows) {
    CAPTURE(row.text);
    SetValue(SectionOf(kCurrent), L"Strength", Dword(77));
    CHECK(WritePredictorValue(kSection, "Strength", row.text));
    CHECK(GetValue(SectionOf(kCurrent), L"Strength") == Dword(row.number));
  }
}

TEST_CASE("a predictor value of another type is not written") {
  const CleanProductKeys clean;
  for (const RegistryValue& value : {RegistryValue{kRegBinary, {'5', 0}}, Qword(5)}) {
    SetValue(SectionOf(kCurrent), L"Strength", value);
    CHECK_FALSE(WritePredictorValue(kSection, "Strength", "7"));
    CHECK(GetValue(SectionOf(kCurrent), L"Strength") == value);
  }
}

}  // namespace dozewell
