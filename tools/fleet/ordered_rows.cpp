#include "fleet/ordered_rows.h"

#include <atomic>
#include <exception>
#include <utility>
#include <vector>

#include "fleet/crew.h"

namespace dozewell::fleet {
namespace {

// Rows that a thread may be ahead of the one to be handed out next, so that a long history does not
// keep the others waiting.
constexpr size_t kAheadPerThread = 64;

struct Place {
  MachineRow row;
  std::atomic<bool> isFull = false;
};

}  // namespace

void InOrder(size_t first, size_t count, int threads, const std::function<MachineRow(size_t)>& make,
             const std::function<void(MachineRow)>& take) {
  std::vector<Place> places(kAheadPerThread * static_cast<size_t>(threads));
  std::atomic<size_t> next = first;
  std::atomic<size_t> taken = first;
  std::atomic<bool> isOver = false;

  const auto work = [&] {
    for (size_t i = next++; i < count && !isOver; i = next++) {
      while (i >= taken + places.size() && !isOver) Pause();
      if (isOver) return;
      Place& place = places[i % places.size()];
      place.row = make(i);
      place.isFull = true;
    }
  };
  std::exception_ptr failure;
  const auto here = [&] {
    try {
      for (size_t i = first; i < count; ++i) {
        Place& place = places[i % places.size()];
        while (!place.isFull) Pause();
        MachineRow row = std::move(place.row);
        place.isFull = false;
        taken = i + 1;
        take(std::move(row));
      }
    } catch (...) {
      failure = std::current_exception();
      isOver = true;
    }
  };
  RunBeside(threads, work, here);
  if (failure) std::rethrow_exception(failure);
}

}  // namespace dozewell::fleet
