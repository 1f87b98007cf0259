#include "common/embedded_settings.h"

#include <doctest/doctest.h>

#include "common/history_csv.h"

namespace dozewell {

TEST_CASE("a settings file goes into a CSV history and comes out of it") {
  const std::string csv = EmbedSettings("# a comment\n\n[Settings]\nTimeResolution=10\n");
  CHECK(csv == "#: # a comment\n#:\n#: [Settings]\n#: TimeResolution=10\n");
  const std::string history = "# {}\n" + csv + "time,asleep\n10,0\n";
  CHECK(EmbeddedSettings(history) == " # a comment\n\n [Settings]\n TimeResolution=10\n");
  CHECK(ParseHistoryCsv(history, "h.csv").size() == 1);
  CHECK(EmbeddedSettings("# one\ntime,asleep\n10,0\n").empty());
}

}  // namespace dozewell
