#include "replay/replay.h"

#include <exception>

#include "common/messages.h"
#include "replay/command_line.h"
#include "replay/standard_streams.h"

namespace dozewell::replay {
namespace {

constexpr int kSuccess = 0;
constexpr int kFailure = 2;

std::string MissingSettingsText(const Options& options, const Results& results) {
  std::string keys;
  for (const std::string& key : results.missingSettings) keys += (keys.empty() ? "" : ", ") + key;
  return options.settings.value_or("") + ": lacks " + keys +
         "; a settings file replaces all default settings";
}

void RunCommandLine(const std::vector<std::string>& arguments, const Streams& streams,
                    Results& results) {
  ParsedCommandLine parsed = ParseCommandLine(arguments);
  if (parsed.command == nullptr) {
    results.output = parsed.help;
    return;
  }
  parsed.options.colour = streams.outputShowsColours;
  parsed.options.progress = streams.messagesGoToTerminal;
  parsed.options.canAsk = streams.questionsCanBeAnswered;
  results.identity.name = parsed.options.machine;
  const bool isOutputTaken = WritesFileToOutput(*parsed.command, parsed.options);
  parsed.command->run(parsed.options, results);
  if (isOutputTaken) results.output.clear();
  if (!results.missingSettings.empty()) {
    results.warnings.push_back(MissingSettingsText(parsed.options, results));
  }
}

}  // namespace

int RunReplay(const std::vector<std::string>& arguments, const Streams& streams) {
  Results results;
  std::exception_ptr failure;
  try {
    RunCommandLine(arguments, streams, results);
  } catch (...) {
    failure = std::current_exception();
  }
  for (const std::string& warning : results.warnings)
    PrintMessage(kProgramName, "warning: " + warning);
  try {
    if (failure) std::rethrow_exception(failure);
    PrintOutput(results.output);
    return kSuccess;
  } catch (const std::exception& error) {
    PrintMessage(kProgramName, error.what());
    return kFailure;
  }
}

}  // namespace dozewell::replay
