#ifndef DOZEWELL_POWERWATCH_WATCH_NAMES_H_
#define DOZEWELL_POWERWATCH_WATCH_NAMES_H_

#include <string>

namespace dozewell::powerwatch {

inline constexpr char kProgramName[] = "dozewell-powerwatch";
inline constexpr wchar_t kWatchServiceName[] = L"DozewellPowerwatch";

// Where an installed watch has what it needs.
struct WatchPlaces {
  std::wstring folder;
  std::wstring program;
  std::wstring file;  // what it writes
};

// The places on a machine whose folder for program data this is.
WatchPlaces PlacesIn(const std::wstring& programData);

}  // namespace dozewell::powerwatch

#endif  // DOZEWELL_POWERWATCH_WATCH_NAMES_H_
