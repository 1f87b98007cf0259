#include "walk/score.h"

namespace dozewell {

std::optional<double> ScoreOf(const Outcomes& outcomes, int32_t weight) {
  const auto fromSleep = static_cast<double>(outcomes.resumesFromSleep);
  const auto hibernated = static_cast<double>(outcomes.hibernateSeconds);
  const double resumes = fromSleep + static_cast<double>(outcomes.resumesFromHibernate);
  const double seconds = hibernated + static_cast<double>(outcomes.sleepSeconds);
  if (resumes <= 0 || seconds <= 0) return std::nullopt;
  const double complement = 100.0 - weight;
  return weight * (fromSleep / resumes) + complement * (hibernated / seconds);
}

}  // namespace dozewell
