#include "fakes/night.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <stdexcept>

#include "controller/state_machine/state_machine.h"
#include "fakes/driver_fake.h"
#include "fakes/journal.h"
#include "fakes/machine.h"
#include "fakes/power_fake.h"
#include "fakes/service_fake.h"
#include "fakes/settings_fake.h"
#include "fakes/thread_fake.h"
#include "prediction/configurations_impl.h"
#include "prediction/cyclic_probability_predictor.h"
#include "service/control_handler.h"
#include "service/service_host.h"
#include "service/service_main.h"
#include "support/captured_output.h"
#include "support/local_times.h"

namespace dozewell::fakes {
namespace {

// Saturday 2026-11-21 and the Sunday after it.
tm Saturday(int32_t hour, int32_t minute, int32_t second = 0) {
  return LocalTime(2026, 11, 21, hour, minute, second);
}
tm Sunday(int32_t hour, int32_t minute, int32_t second = 0) {
  return LocalTime(2026, 11, 22, hour, minute, second);
}

void PowerEvent(uint32_t type, const void* data = nullptr) {
  ServiceCtrlHandler(kControlPowerEvent, type, data);
}

void Resume(bool timerExpired, uint32_t previousSleepStatus) {
  uint32_t& word = driver.timer.words[1];
  word = timerExpired ? word | kTimerExpired : word & ~kTimerExpired;
  driver.previousSleepStatus = previousSleepStatus;
  PowerEvent(kPowerResumeAutomatic);
}

void Stop() { ServiceCtrlHandler(kControlStop, 0, nullptr); }

struct Happening {
  const char* name;
  tm time;
  std::function<void()> happen;
};

const Happening kNight[] = {
    {"start thread", Saturday(17, 0), [] { threads.Run(); }},
    {"suspend", Saturday(18, 5), [] { PowerEvent(kPowerSuspend); }},
    {"system wake", Saturday(18, 15), [] { Resume(false, kSleepWentOnToHibernation); }},
    {"hibernation", Saturday(18, 15, 10), [] { PowerEvent(kPowerSuspend); }},
    {"timer wake", Sunday(8, 0), [] { Resume(true, kSleepEndedByTimer); }},
    {"sleep thread", Sunday(8, 0, 1), [] { threads.Run(); }},
    {"back to sleep", Sunday(8, 0, 5), [] { PowerEvent(kPowerSuspend); }},
    {"resume", Sunday(9, 30), [] { Resume(false, 0); }},
    {"optimizer thread", Sunday(9, 30, 1), [] { threads.Run(); }},
    {"daily save", Sunday(17, 0, 1),
     [] { PowerEvent(kPowerSettingChange, kIdleBackgroundTask.data()); }},
    {"reset", Sunday(17, 10),
     [] { PostEvent(std::make_unique<SMEventData>(SMEvent::ResetHistory)); }},
    {"stop", Sunday(18, 0), Stop},
};

// Three weeks in which the machine was in use from 8 to 18 o'clock every day, up to the Friday.
void LearnHabits() {
  ConfigurationsImpl configurations;
  HistorianImpl historian;
  CyclicProbabilityPredictor predictor(&configurations, &historian);
  for (int32_t day = -20; day <= 1; ++day) {
    historian.NotifyListener({WeekTime(day, 8), Activating});
    historian.NotifyListener({WeekTime(day, 18), Suspend});
  }
  historian.NotifyListener({{}, ContainerStopped});
}

bool Keeps(const char* value, uint32_t seconds, const wchar_t* cachedName) {
  const auto cached = settings.current.values.find(cachedName);
  return power.values[value] == seconds ||
         (cached != settings.current.values.end() && cached->second == Number32(seconds / 60));
}

void EndStep(Night& night, const std::string& name) {
  night.push_back({name, TakeJournal(), Keeps("balanced AC hibernate", 1800, L"HA_AC"),
                   Keeps("balanced DC hibernate", 900, L"HA_DC")});
}

}  // namespace

NightStep& Night::operator[](const std::string& name) {
  const auto found = std::ranges::find(*this, name, &NightStep::name);
  if (found == end()) throw std::out_of_range(name);
  return *found;
}

Night PlayNight(const std::function<void()>& prepare,
                const std::function<void(const std::string& step)>& afterStep) {
  const Machine machine;
  LearnHabits();
  settings.current.values[L"TotalAttempts"] = Number32(3);
  settings.current.values[L"CurrentAttempt"] = Number32(3);
  settings.failer = {};
  settings.calls.clear();
  SetTime(Saturday(16, 59, 59));
  TakeJournal();
  prepare();

  Night night;
  const auto end = [&](const std::string& name) {
    EndStep(night, name);
    afterStep(name);
  };
  service.whileListening = [&] {
    end("up");
    for (const Happening& happening : kNight) {
      SetTime(happening.time);
      happening.happen();
      end(happening.name);
    }
    // A service that goes on in spite of the stop is stopped again.
    if (service.listening) {
      Stop();
      end("second stop");
    }
  };
  OutputOf(ServiceMain);
  end("down");
  return night;
}

}  // namespace dozewell::fakes
