#include "ctl/live_history.h"

#include <utility>

#include "base/durable_file.h"
#include "base/utf8.h"
#include "common/history_io.h"
#include "common/machine_identity.h"
#include "ctl/live_files.h"

namespace dozewell::ctl {
namespace {

std::vector<HistoryRecord> SavedHistory(std::vector<std::string>& warnings) {
  const std::wstring path = LiveFilePath(kHistoryFileName);
  const std::string name = NarrowToUtf8(path);
  FileContent content = ReadDurableFile(path);
  if (!content.failure) {
    return IncreasingRecords(DatHistory(name, std::move(content.bytes), warnings).bytes);
  }
  warnings.push_back(name + ": ignored: it cannot be opened");
  return {};
}

}  // namespace

std::vector<HistoryRecord> LiveHistory(const UnsavedLearning& unsaved,
                                       std::vector<std::string>& warnings) {
  std::vector<HistoryRecord> history = SavedHistory(warnings);
  const std::vector<HistoryRecord> unsavedRecords = RecordsAfter(unsaved, TimeOfLast(history));
  history.insert(history.end(), unsavedRecords.begin(), unsavedRecords.end());
  return history;
}

}  // namespace dozewell::ctl
