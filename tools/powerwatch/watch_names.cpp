#include "powerwatch/watch_names.h"

namespace dozewell::powerwatch {

WatchPlaces PlacesIn(const std::wstring& programData) {
  const std::wstring folder = programData + L"\\" + kWatchServiceName;
  return {folder, folder + L"\\dozewell-powerwatch.exe", folder + L"\\powerwatch.csv"};
}

}  // namespace dozewell::powerwatch
