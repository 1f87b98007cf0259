#include "replay/settings_file.h"

#include <doctest/doctest.h>

#include "base/file.h"
#include "common/tool_error.h"
#include "support/file_name.h"

namespace dozewell::replay {
namespace {

std::string SettingsError(std::string_view text) {
  try {
    SettingsFile(text, "s.ini");
  } catch (const ToolError& error) {
    return error.what();
  }
  return "no error";
}

}  // namespace

TEST_CASE("settings are values of keys in sections") {
  const SettingsFile settings("[A]\nx=1\n[B]\nx=2\n[A]\ny=3", "s.ini");
  CHECK(settings.Value("A", "x") == "1");
  CHECK(settings.Value("B", "x") == "2");
  CHECK(settings.Value("A", "y") == "3");
  CHECK(settings.Value("B", "y").empty());
  CHECK(settings.Value("C", "x").empty());
  CHECK(settings.Has("a", "X"));
  CHECK_FALSE(settings.Has("B", "y"));
  CHECK(settings.Name() == "s.ini");
}

TEST_CASE("the last value of a key counts, an empty one too") {
  const SettingsFile settings("[A]\nx=1\ny=1\nx=2\nX=3\ny=\n", "s.ini");
  CHECK(settings.Value("A", "x") == "3");
  CHECK(settings.Value("A", "y").empty());
}

TEST_CASE("names of sections and keys have no case") {
  const SettingsFile settings("[settings]\nTIMERESOLUTION=5\n", "s.ini");
  CHECK(settings.Value("Settings", "TimeResolution") == "5");
}

TEST_CASE("blanks around names and values do not count, those inside do") {
  const SettingsFile settings("\t[ A b ] \r\n  my key \t=  a  b \t\r\n", "s.ini");
  CHECK(settings.Value("A b", "my key") == "a  b");
}

TEST_CASE("comments are whole lines") {
  const SettingsFile settings("# a\n; b\n\n  # c=1\n[A]\nx=1 # d ; e\n#x=2\ny=[=]\n", "s.ini");
  CHECK(settings.Value("A", "x") == "1 # d ; e");
  CHECK(settings.Value("A", "y") == "[=]");
}

TEST_CASE("a byte order mark before the settings is passed over") {
  CHECK(SettingsFile("\xEF\xBB\xBF[A]\nx=1", "s.ini").Value("A", "x") == "1");
}

TEST_CASE("a line that is no setting is refused with its number") {
  CHECK(SettingsError("") == "no error");
  CHECK(SettingsError("[A]\nx\n") == "s.ini: line 2: neither [section] nor key=value: x");
  CHECK(SettingsError("[A]\n\n =5\n") == "s.ini: line 3: neither [section] nor key=value: =5");
  CHECK(SettingsError("[A\n") == "s.ini: line 1: neither [section] nor key=value: [A");
  CHECK(SettingsError("[A] # x=1\n") ==
        "s.ini: line 1: neither [section] nor key=value: [A] # x=1");
  CHECK(SettingsError("[\n") == "s.ini: line 1: neither [section] nor key=value: [");
  CHECK(SettingsError("# c\nx=1\n[A]\n") == "s.ini: line 2: a key before any [section]: x=1");
}

TEST_CASE("without a settings file there are the default settings") {
  const SettingsFile settings = LoadSettings(std::nullopt);
  CHECK(settings.Value("CyclicProbabilityPredictor", "DaysInCycle") == "7");
  CHECK(settings.Value("CyclicProbabilityPredictor", "MinutesInDay") == "1440");
  CHECK(settings.Value("Settings", "TimeResolution") == "10");
}

TEST_CASE("settings come from the file of the name that is given") {
  const TempFolder folder;
  WriteWholeFile(folder.File(L"s.ini"), "[A]\nx=1\n", 8);
  CHECK(LoadSettings(FileName(folder, L"s.ini")).Value("A", "x") == "1");
  const std::string missing = FileName(folder, L"t.ini");
  CHECK_THROWS_WITH_AS(LoadSettings(missing),
                       (missing + ": cannot be read: No such file or directory").c_str(),
                       ToolError);
}

}  // namespace dozewell::replay
