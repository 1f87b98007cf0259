#include "ctl/check/try_timeouts.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "power/power_scheme.h"
#include "power/scheme_settings.h"
#include "settings/setting_names.h"
#include "settings/settings_store.h"

namespace dozewell::ctl {
namespace {

struct Source {
  uint32_t number;
  const char* name;
  const wchar_t* cacheName;
  const char* cacheText;
};
constexpr Source kTriedSources[] = {
    {kPowerSourceAC, "on mains", kCachedHAForACName, "HA_AC"},
    {kPowerSourceDC, "on battery", kCachedHAForDCName, "HA_DC"},
};

bool ReadTimeout(const Source& source, const Guid& scheme, uint32_t& seconds) {
  return ReadSchemeValue(source.number, scheme, kHibernateAfterSetting.subgroup,
                         kHibernateAfterSetting.setting, seconds);
}

bool WriteTimeout(const Source& source, const Guid& scheme, uint32_t seconds) {
  return WriteSchemeValue(source.number, scheme, kHibernateAfterSetting.subgroup,
                          kHibernateAfterSetting.setting, seconds);
}

// Why nothing may be written now; empty when it may.
std::string ReasonAgainst(const Source& source, const Guid& scheme, uint32_t seconds) {
  for (const Source& each : kTriedSources) {
    uint32_t unused = 0;
    if (ReadSetting(each.cacheName, unused, /*deleteAfterRead=*/false)) {
      return std::string(each.cacheText) + " is cached: a predicted timeout is in force";
    }
  }
  Guid active = {};
  uint32_t current = 0;
  if (!GetActivePowerScheme(active) || active != scheme) return "the active scheme has changed";
  if (!ReadTimeout(source, scheme, current) || current != seconds) {
    return std::string("the timeout ") + source.name + " has changed";
  }
  return {};
}

class Trial {
 public:
  explicit Trial(const std::function<double()>& now) : now_(now) {}

  TriedTimeouts Run() {
    Guid scheme = {};
    std::array<uint32_t, std::size(kTriedSources)> seconds = {};
    bool isRead = Step("read which scheme is active", [&] { return GetActivePowerScheme(scheme); });
    for (size_t i = 0; i < seconds.size() && isRead; ++i) {
      isRead = Step(std::string("read the timeout ") + kTriedSources[i].name,
                    [&] { return ReadTimeout(kTriedSources[i], scheme, seconds[i]); });
    }
    if (!isRead) {
      tried_.refusal = "not everything could be read";
      return tried_;
    }
    for (size_t i = 0; i < seconds.size(); ++i) {
      tried_.refusal = ReasonAgainst(kTriedSources[i], scheme, seconds[i]);
      if (!tried_.refusal.empty()) return tried_;
      Step(std::string("write the timeout ") + kTriedSources[i].name,
           [&] { return WriteTimeout(kTriedSources[i], scheme, seconds[i]); });
      Step("put it into effect", [&] { return SetActivePowerScheme(scheme); });
    }
    return tried_;
  }

 private:
  bool Step(const std::string& name, const std::function<bool()>& act) {
    const double start = now_();
    const bool isDone = act();
    tried_.steps.push_back({name, now_() - start, isDone});
    return isDone;
  }

  const std::function<double()>& now_;
  TriedTimeouts tried_;
};

}  // namespace

double TriedTimeouts::Milliseconds() const {
  double sum = 0;
  for (const TriedStep& step : steps) sum += step.milliseconds;
  return sum;
}

bool TriedTimeouts::IsDone() const {
  return refusal.empty() && std::ranges::all_of(steps, &TriedStep::isDone);
}

TriedTimeouts TryTimeouts(const std::function<double()>& now) { return Trial(now).Run(); }

}  // namespace dozewell::ctl
