#include "prediction/data_file.h"

#include <cstdio>
#include <cstring>
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

bool HasSizeFor(const CycleShape& shape, int64_t size) {
  return shape.IsUsable() && size == TrackerDataSize(shape.SlotCount());
}

TrackerDataPtr Allocate(size_t byteCount) {
  TrackerDataPtr data(static_cast<TrackerData*>(std::malloc(byteCount)));
  if (!data) throw std::bad_alloc();
  return data;
}

// Takes data of the right size if they are for this cycle.
LoadedData Examine(const CycleShape& shape, TrackerDataPtr data) {
  if (ShapeOf(*data) != shape) return {DataFileState::OtherConfiguration, nullptr};
  if (data->slotCount != shape.SlotCount()) return {DataFileState::WrongShape, nullptr};
  return {DataFileState::Loaded, std::move(data)};
}

LoadedData Load(const CycleShape& shape, const std::wstring& path) {
  const File file = OpenDurableFile(path);
  if (!file) {
    const bool isMissing = WhyFileFailed() == FileFailure::Missing;
    return {isMissing ? DataFileState::NotOpened : DataFileState::NotRead, nullptr};
  }
  const int64_t size = SizeOfFile(file.get());
  if (size < 0) return {DataFileState::NotRead, nullptr};
  if (!HasSizeFor(shape, size)) return {DataFileState::WrongSize, nullptr};
  const auto byteCount = static_cast<size_t>(size);
  TrackerDataPtr data = Allocate(byteCount);
  if (std::fread(data.get(), 1, byteCount, file.get()) != byteCount) {
    return {DataFileState::NotRead, nullptr};
  }
  return Examine(shape, std::move(data));
}

}  // namespace

LoadedData LoadDataIfExists(IConfigurations& configuration, const std::wstring& path) {
  return Load(ConfiguredCycle(configuration), path);
}

LoadedData LoadContent(IConfigurations& configuration, std::span<const unsigned char> content) {
  const CycleShape shape = ConfiguredCycle(configuration);
  if (!HasSizeFor(shape, std::ssize(content))) return {DataFileState::WrongSize, nullptr};
  TrackerDataPtr data = Allocate(content.size());
  std::memcpy(data.get(), content.data(), content.size());
  return Examine(shape, std::move(data));
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
