#ifndef DOZEWELL_TESTS_FUZZ_INPUT_H_
#define DOZEWELL_TESTS_FUZZ_INPUT_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <span>
#include <vector>

namespace dozewell::fuzz {

// Takes values from the front of a fuzzer's input, and zeros when it is used up.
class Input {
 public:
  Input(const uint8_t* data, size_t size) : rest_(data, size) {}

  bool IsEmpty() const { return rest_.empty(); }

  template <typename Value>
  Value Take() {
    Value value{};
    const std::span<const uint8_t> bytes = TakeBytes(sizeof(value));
    if (!bytes.empty()) std::memcpy(&value, bytes.data(), bytes.size());
    return value;
  }

  std::span<const uint8_t> TakeBytes(size_t count) {
    const std::span<const uint8_t> bytes = rest_.first(std::min(count, rest_.size()));
    rest_ = rest_.subspan(bytes.size());
    return bytes;
  }

  std::vector<uint8_t> TakeRest() { return {rest_.begin(), rest_.end()}; }

 private:
  std::span<const uint8_t> rest_;
};

// Aborts the run, which the fuzzer reports as a finding.
inline void Require(bool condition) {
  if (!condition) std::abort();
}

}  // namespace dozewell::fuzz

#endif  // DOZEWELL_TESTS_FUZZ_INPUT_H_
