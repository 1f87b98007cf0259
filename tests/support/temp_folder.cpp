#include "support/temp_folder.h"

#include <chrono>

#include "base/file.h"

namespace dozewell {

TempFolder::TempFolder() {
  const auto stamp = std::chrono::system_clock::now().time_since_epoch().count();
  for (int i = 0;; ++i) {
    folder_ = std::filesystem::temp_directory_path() /
              ("dozewell-" + std::to_string(stamp) + "-" + std::to_string(i));
    if (std::filesystem::create_directory(folder_)) break;
  }
  path_ = PathFromSystem(folder_.string());
}

TempFolder::~TempFolder() { std::filesystem::remove_all(folder_); }

}  // namespace dozewell
