#include "fakes/client_machine.h"

#include <doctest/doctest.h>

#include <utility>

#include "ctl/ctl.h"
#include "ctl/fakes/check_fake.h"
#include "ctl/fakes/client_fake.h"
#include "ctl/fakes/utc_time_fake.h"
#include "fakes/clock_fake.h"
#include "fakes/power_fake.h"
#include "fakes/settings_fake.h"
#include "prediction/configurations.h"
#include "prediction/configurations_impl.h"
#include "prediction/cyclic_probability_predictor.h"

namespace dozewell::fakes {

ClientMachine::ClientMachine() {
  client = {};
  checked = {};
  power = {};
  ResetSettings();
  settings.dataFolder = folder_.File(L"");
  clock = {};
  utcOffsetSeconds = 0;
}

ClientMachine::~ClientMachine() { utcOffsetSeconds = 0; }

void ClientMachine::Provision() {
  settings.defaults.values = {{L"TimeResolution", Number32(30)},
                              {L"TotalAttempts", Number32(3)},
                              {L"CurrentAttempt", Number32(3)},
                              {L"ServiceFeedback", Number32(1)}};
  for (const auto& [name, value] : {std::pair{"DaysInCycle", "1"},
                                    {"MinutesInDay", "1440"},
                                    {"FirstLastWeight", "2"},
                                    {"SecondLastWeight", "1"},
                                    {"AgregationWeight", "1"},
                                    {"StrengthHigh", "70"},
                                    {"StrengthLow", "30"}}) {
    settings.defaults.predictorValues[{kPredictorSection, name}] = Text(value);
  }
}

void ClientMachine::SaveLearnt(const std::vector<TimeLineEvent>& events) {
  ConfigurationsImpl configurations;
  HistorianImpl historian;
  const CyclicProbabilityPredictor predictor(&configurations, &historian);
  for (const TimeLineEvent& event : events) historian.NotifyListener(event);
  historian.NotifyListener({{}, ContainerStopped});
  settings.calls.clear();
}

namespace {

// Each document ends with the machine's identity, as does each object of a list.
void TakeIdentities(ClientRun& run) {
  const std::string key = ",\"identity\":";
  for (size_t begin = 0; (begin = run.output.find(key, begin)) != std::string::npos;) {
    const size_t end = run.output.find('}', begin) + 1;
    const size_t value = begin + key.size();
    run.identity = run.output.substr(value, end - value);
    run.output.erase(begin, end - begin);
  }
}

}  // namespace

ClientRun Ctl(const ClientMachine& machine, const std::vector<std::string>& arguments) {
  ClientRun run = {};
  const ctl::Console console = {
      [&run](const std::string& output) { run.output += output; },
      [&run](const std::string& message) { run.messages.push_back(message); },
      [&run, &machine](const std::string& question) {
        run.questions.push_back(question);
        return machine.answer;
      },
      machine.isTerminal};
  run.exitCode = ctl::RunCtl(arguments, console);
  TakeIdentities(run);
  return run;
}

void Works(const ClientMachine& machine, const std::vector<std::string>& arguments,
           const std::string& output) {
  const ClientRun run = Ctl(machine, arguments);
  CHECK(run.output == output);
  CHECK(run.messages == std::vector<std::string>{});
  CHECK(run.exitCode == 0);
}

void Fails(const ClientMachine& machine, const std::vector<std::string>& arguments, int exitCode,
           const std::string& message) {
  const ClientRun run = Ctl(machine, arguments);
  CHECK(run.output == "");
  CHECK(run.messages == std::vector<std::string>{message});
  CHECK(run.exitCode == exitCode);
}

}  // namespace dozewell::fakes
