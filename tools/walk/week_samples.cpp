#include "walk/week_samples.h"

#include <algorithm>
#include <bit>
#include <random>

#include "walk/score.h"

namespace dozewell {
namespace {

constexpr size_t kSamples = 1000;
constexpr size_t kOneOfSamplesOutside = 40;  // below the range, and as many above it

// FNV-1a over what a record says.
uint64_t HashOf(std::span<const HistoryRecord> history) {
  uint64_t hash = 0xCBF29CE484222325;
  const auto add = [&](uint64_t number) {
    for (int shift = 0; shift < 64; shift += 8) {
      hash = (hash ^ (number >> shift & 0xFF)) * 0x100000001B3;
    }
  };
  for (const HistoryRecord& record : history) {
    add(std::bit_cast<uint64_t>(record.time));
    add(record.asleep);
  }
  return hash;
}

}  // namespace

WeekSamples::WeekSamples(std::span<const HistoryRecord> history, size_t weeks) : weeks_(weeks) {
  // The engine is the same on every system; the distributions of the standard library are not.
  std::mt19937_64 engine(HashOf(history));
  drawn_.resize(kSamples * weeks);
  for (uint32_t& week : drawn_) week = static_cast<uint32_t>(engine() % weeks);
}

std::optional<ScoreRange> WeekSamples::RangeOf(std::span<const Outcomes> weeks,
                                               int32_t weight) const {
  Outcomes all;
  for (const Outcomes& week : weeks) all += week;
  const std::optional<double> score = ScoreOf(all, weight);
  if (!score) return std::nullopt;
  std::vector<double> scores;
  scores.reserve(kSamples);
  for (auto next = drawn_.begin(); next != drawn_.end();) {
    Outcomes sample;
    for (size_t i = 0; i < weeks_; ++i) sample += weeks[*next++];
    // A sample of weeks without a second asleep says nothing.
    if (const auto sampled = ScoreOf(sample, weight)) scores.push_back(*sampled);
  }
  if (scores.empty()) return ScoreRange{*score, *score, *score};
  std::ranges::sort(scores);
  const size_t outside = scores.size() / kOneOfSamplesOutside;
  return ScoreRange{*score, scores[outside], scores[scores.size() - 1 - outside]};
}

}  // namespace dozewell
