#include "prediction/rates/rates_file.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>

#include "base/durable_file.h"
#include "base/wall_clock.h"

namespace dozewell {
namespace {

constexpr uint32_t kVersion = 1;

struct Header {
  uint32_t version;
  uint32_t stateSize;
  uint64_t checksum;  // of the state
};

static_assert(std::has_unique_object_representations_v<Header>);
static_assert(std::is_trivially_copyable_v<RatesState>);
static_assert(std::endian::native == std::endian::little, "data files are little-endian");
// Two tables of floats, the numbers beside them, the factors, two times: nothing lies between them.
static_assert(sizeof(LearntRates) == 2 * kRateCells * sizeof(float) + 4 * 8);
static_assert(sizeof(RatesState) == sizeof(LearntRates) + 1170 * sizeof(double) + 2 * 8);

// FNV-1a.
uint64_t ChecksumOf(std::span<const unsigned char> bytes) {
  uint64_t sum = 0xcbf29ce484222325;
  for (const unsigned char byte : bytes) sum = (sum ^ byte) * 0x100000001b3;
  return sum;
}

// Far beyond what sleeps, seconds and returns add up to, and what a factor can be; with these no
// fit leaves the range of a double.
constexpr double kMostAmount = 1e12;
constexpr double kMostFactor = 1e15;

template <typename Numbers>
bool AreAmounts(const Numbers& numbers) {
  return std::ranges::all_of(numbers,
                             [](double number) { return number >= 0 && number < kMostAmount; });
}

template <typename Numbers>
bool AreFactors(const Numbers& numbers) {
  return std::ranges::all_of(
      numbers, [](double number) { return number > 1 / kMostFactor && number < kMostFactor; });
}

bool IsTime(int64_t seconds) { return seconds >= RatesState::kNone && seconds <= kLastSecond; }

bool IsSound(const RatesState& state) {
  const LearntRates& learnt = state.learnt;
  const RateFactors& factors = state.factors;
  return AreAmounts(learnt.secondsAway) && AreAmounts(learnt.returns) &&
         AreAmounts(std::array{learnt.idleCount, learnt.idleSeconds}) && learnt.sleeps >= 0 &&
         learnt.sleeps < INT32_MAX && IsTime(learnt.lastResume) && IsTime(state.suspend) &&
         IsTime(state.newest) && AreFactors(std::array{factors.base}) && AreFactors(factors.away) &&
         AreFactors(factors.clockWide) && AreFactors(factors.clock) &&
         AreFactors(factors.kindWide) && AreFactors(factors.kind) && AreFactors(factors.day) &&
         AreFactors(factors.local);
}

}  // namespace

std::vector<unsigned char> RatesFileOf(const RatesState& state) {
  std::vector<unsigned char> file(sizeof(Header) + sizeof(state));
  const std::span content = std::span(file).subspan(sizeof(Header));
  std::memcpy(content.data(), &state, sizeof(state));
  const Header header = {kVersion, sizeof(state), ChecksumOf(content)};
  std::memcpy(file.data(), &header, sizeof(header));
  return file;
}

std::unique_ptr<RatesState> ReadRatesFile(std::span<const unsigned char> file) {
  if (file.size() != sizeof(Header) + sizeof(RatesState)) return nullptr;
  Header header;
  std::memcpy(&header, file.data(), sizeof(header));
  const std::span content = file.subspan(sizeof(header));
  if (header.version != kVersion || header.stateSize != content.size() ||
      header.checksum != ChecksumOf(content)) {
    return nullptr;
  }
  auto state = std::make_unique<RatesState>();
  std::memcpy(state.get(), content.data(), content.size());
  return IsSound(*state) ? std::move(state) : nullptr;
}

LoadedRates LoadRates(const std::wstring& path) {
  const FileContent file = ReadDurableFile(path);
  if (file.failure) return {nullptr, file.failure != FileFailure::Missing};
  return {ReadRatesFile(file.bytes), false};
}

bool SaveRates(const RatesState& state, const std::wstring& path, bool isOfUnreadFile) {
  if (isOfUnreadFile && ReadBeforeWriting(path).failure != FileFailure::Missing) return false;
  const std::vector<unsigned char> file = RatesFileOf(state);
  return WriteDurableFile(path, file.data(), file.size());
}

}  // namespace dozewell
