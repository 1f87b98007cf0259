#include "replay/replay.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <exception>

#include "replay/command_line.h"
#include "replay/replay_error.h"

namespace dozewell {
namespace {

constexpr int kSuccess = 0;
constexpr int kFailure = 2;

// Whatever names and file contents it quotes, a message is one line.
void PrintMessage(std::string message) {
  std::replace_if(
      message.begin(), message.end(),
      [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7f'; }, '?');
  std::fprintf(stderr, "%s: %s\n", kProgramName, message.c_str());
}

void PrintOutput(const std::string& output) {
  errno = 0;
  if (std::fwrite(output.data(), 1, output.size(), stdout) != output.size() ||
      std::fflush(stdout) != 0) {
    throw ReplayError(WithReason("standard output: cannot be written"));
  }
}

void RunCommandLine(const std::vector<std::string>& arguments, bool colour, Results& results) {
  ParsedCommandLine parsed = ParseCommandLine(arguments);
  if (parsed.command == nullptr) {
    results.output = parsed.help;
    return;
  }
  parsed.options.colour = colour;
  parsed.command->run(parsed.options, results);
}

}  // namespace

int RunReplay(const std::vector<std::string>& arguments, bool colour) {
  Results results;
  std::exception_ptr failure;
  try {
    RunCommandLine(arguments, colour, results);
  } catch (...) {
    failure = std::current_exception();
  }
  for (const std::string& warning : results.warnings) PrintMessage("warning: " + warning);
  try {
    if (failure) std::rethrow_exception(failure);
    PrintOutput(results.output);
    return kSuccess;
  } catch (const std::exception& error) {
    PrintMessage(error.what());
    return kFailure;
  }
}

}  // namespace dozewell
