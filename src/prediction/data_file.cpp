#include "prediction/data_file.h"

#include <cstdio>
#include <new>
#include <utility>

#include "base/durable_file.h"
#include "base/exception.h"

namespace dozewell {
namespace {

CycleShape ConfiguredCycle(IConfigurations& configuration) {
  const CycleShape shape = ReadCycleShape(configuration);
  if (shape.daysInCycle == 0 || shape.minutesPerSlot == kNone || shape.minutesInDay == 0) {
    throw FixedTextException("CyclicProbabilityPredictor::LoadDataIfExists - wrong configurations");
  }
  return shape;
}

LoadedData Load(const CycleShape& shape, const std::wstring& path) {
  const File file = OpenDurableFile(path);
  if (!file) {
    const bool isMissing = WhyFileFailed() == FileFailure::Missing;
    return {isMissing ? DataFileState::NotOpened : DataFileState::NotRead, nullptr};
  }
  const int64_t size = SizeOfFile(file.get());
  if (size < 0) return {DataFileState::NotRead, nullptr};
  if (!shape.IsUsable() || size != TrackerDataSize(shape.SlotCount())) {
    return {DataFileState::WrongSize, nullptr};
  }
  const auto byteCount = static_cast<size_t>(size);
  TrackerDataPtr data(static_cast<TrackerData*>(std::malloc(byteCount)));
  if (!data) throw std::bad_alloc();
  if (std::fread(data.get(), 1, byteCount, file.get()) != byteCount) {
    return {DataFileState::NotRead, nullptr};
  }
  if (ShapeOf(*data) != shape) return {DataFileState::OtherConfiguration, nullptr};
  if (data->slotCount != shape.SlotCount()) return {DataFileState::WrongShape, nullptr};
  return {DataFileState::Loaded, std::move(data)};
}

}  // namespace

LoadedData LoadDataIfExists(IConfigurations& configuration, const std::wstring& path) {
  return Load(ConfiguredCycle(configuration), path);
}

LoadedData LoadNewestData(IConfigurations& configuration, const std::wstring& path,
                          KnownData known) {
  const CycleShape shape = ConfiguredCycle(configuration);
  LoadedData loaded = Load(shape, path);
  const bool isUnread = loaded.state == DataFileState::NotRead;
  const bool isNewer =
      !known.isSaved && (!known.isOfUnreadFile || loaded.state != DataFileState::Loaded);
  // A file of another version is not written over, so it is not passed over either.
  const bool isOfOtherVersion = loaded.data && loaded.data->version != 0;
  if (known.data && (isUnread || isNewer) && !isOfOtherVersion && ShapeOf(*known.data) == shape) {
    loaded.data = std::move(known.data);
    if (!known.isOfUnreadFile) loaded.state = DataFileState::Loaded;
  }
  return loaded;
}

bool SaveData(const TrackerData& data, const std::wstring& path, bool isOfUnreadFile) {
  if (isOfUnreadFile && ReadBeforeWriting(path).failure != FileFailure::Missing) return false;
  return WriteDurableFile(path, &data, static_cast<size_t>(TrackerDataSize(data.slotCount)));
}

}  // namespace dozewell
