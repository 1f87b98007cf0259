#include <atomic>
#include <cstdint>

#include "base/clock.h"
#include "stress/quiet_machine.h"

namespace dozewell {
namespace {

std::atomic<int64_t> now{1795219200};  // 2026-11-21 00:00

}  // namespace

int64_t UtcSecondsNow() { return now += quiet::kClockStep; }

bool LocalTimeNow(tm& time) { return TmFromSeconds(UtcSecondsNow(), time); }

}  // namespace dozewell
