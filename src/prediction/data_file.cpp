#include "prediction/data_file.h"

#include <cstdio>
#include <new>

#include "base/exception.h"
#include "base/file.h"

namespace dozewell {

LoadedData LoadDataIfExists(IConfigurations& configuration, const std::wstring& path) {
  const CycleShape shape = ReadCycleShape(configuration);
  if (shape.daysInCycle == 0 || shape.minutesPerSlot == kNone || shape.minutesInDay == 0) {
    throw FixedTextException("CyclicProbabilityPredictor::LoadDataIfExists - wrong configurations");
  }

  const File file = OpenFile(path, "rb");
  if (!file) return {DataFileState::NotOpened, nullptr};
  const int64_t size = SizeOfFile(file.get());
  if (!shape.IsUsable() || size != TrackerDataSize(shape.SlotCount())) {
    return {DataFileState::WrongSize, nullptr};
  }
  const auto byteCount = static_cast<size_t>(size);
  TrackerDataPtr data(static_cast<TrackerData*>(std::malloc(byteCount)));
  if (!data) throw std::bad_alloc();
  if (std::fread(data.get(), 1, byteCount, file.get()) != byteCount) {
    return {DataFileState::WrongSize, nullptr};
  }
  if (ShapeOf(*data) != shape) return {DataFileState::OtherConfiguration, nullptr};
  if (data->slotCount != shape.SlotCount()) return {DataFileState::WrongShape, nullptr};
  return {DataFileState::Loaded, std::move(data)};
}

void SaveData(const TrackerData& data, const std::wstring& path) {
  WriteWholeFile(path, &data, static_cast<size_t>(TrackerDataSize(data.slotCount)));
}

}  // namespace dozewell
