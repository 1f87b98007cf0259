#include "common/service_file.h"

#include "base/durable_file.h"
#include "base/side_file.h"
#include "base/utf8.h"
#include "common/named_file.h"
#include "common/text.h"
#include "prediction/cyclic_probability_predictor.h"
#include "prediction/history_file.h"

namespace dozewell {
namespace {

bool HasNameOfService(const std::wstring& path) {
  const std::string name = NarrowToUtf8(NameInFolder(path));
  return EqualIgnoringCase(name, NarrowToUtf8(kHistoryFileName)) ||
         EqualIgnoringCase(name, NarrowToUtf8(kDataFileName));
}

}  // namespace

std::string NameThatCounts(const std::string& name) {
  const std::wstring path = PathFromSystem(name);
  return HasNameOfService(path) ? PathToSystem(PathOfNewest(path)) : name;
}

void RemoveWaiting(const std::wstring& path) {
  if (!HasNameOfService(path)) return;
  for (const std::wstring& waiting : {path + kSideFileSuffixes[0], path + kSideFileSuffixes[1]}) {
    if (IsOwnSideFile(waiting, path)) RemoveFile(waiting);
  }
}

}  // namespace dozewell
