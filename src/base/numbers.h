#ifndef DOZEWELL_BASE_NUMBERS_H_
#define DOZEWELL_BASE_NUMBERS_H_

#include <cstdint>
#include <string_view>

namespace dozewell {

// The low 32 bits of a result computed in 64 bits: how sums and products of 32-bit settings wrap.
constexpr int32_t Wrap32(int64_t value) { return static_cast<int32_t>(value); }

// a + b and a - b modulo 2^64.
constexpr int64_t WrapAdd64(int64_t a, int64_t b) {
  return static_cast<int64_t>(static_cast<uint64_t>(a) + static_cast<uint64_t>(b));
}
constexpr int64_t WrapSubtract64(int64_t a, int64_t b) {
  return static_cast<int64_t>(static_cast<uint64_t>(a) - static_cast<uint64_t>(b));
}

// Decimal text to number as the Windows runtime's atoi reads it: leading white space, one sign,
// digits up to the first other character; no number gives 0, and one that 32 bits cannot
// hold saturates.
int32_t Atoi(std::string_view text);

// A double's whole part. One that 64 bits cannot hold, not-a-number included, gives -2^63, as the
// processor's conversion instruction does.
int64_t TruncateToInt64(double value);

}  // namespace dozewell

#endif  // DOZEWELL_BASE_NUMBERS_H_
