#include "powerwatch/watch_names.h"

#include <doctest/doctest.h>

namespace dozewell::powerwatch {

TEST_CASE("the watch has a folder of its own, with its program and its file") {
  const WatchPlaces places = PlacesIn(L"C:\\ProgramData");
  CHECK(places.folder == L"C:\\ProgramData\\DozewellPowerwatch");
  CHECK(places.program == L"C:\\ProgramData\\DozewellPowerwatch\\dozewell-powerwatch.exe");
  CHECK(places.file == L"C:\\ProgramData\\DozewellPowerwatch\\powerwatch.csv");
}

}  // namespace dozewell::powerwatch
