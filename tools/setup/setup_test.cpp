#include "setup/setup.h"

#include <doctest/doctest.h>

#include <stdexcept>

namespace dozewell::setup {
namespace {

int stepsTaken = 0;

constexpr Step kSteps[] = {
    {"count", [] { ++stepsTaken; }},
    {"fail", [] { throw std::runtime_error("the disk is full"); }},
};

struct Run {
  int exitCode = 0;
  std::vector<std::string> reports;
};

Run RunWith(const std::vector<std::string>& arguments) {
  Run run;
  run.exitCode = RunSetup(arguments, kSteps,
                          [&run](const std::string& message) { run.reports.push_back(message); });
  return run;
}

}  // namespace

TEST_CASE("setup takes the step that is named, once") {
  stepsTaken = 0;
  const Run run = RunWith({"count"});
  CHECK(run.exitCode == 0);
  CHECK(run.reports.empty());
  CHECK(stepsTaken == 1);
}

TEST_CASE("a setup step that fails is reported with its reason") {
  const Run run = RunWith({"fail"});
  CHECK(run.exitCode == 1);
  CHECK(run.reports == std::vector<std::string>{"the disk is full"});
}

TEST_CASE("setup without exactly one step takes none and names them all") {
  stepsTaken = 0;
  for (const auto& arguments : std::vector<std::vector<std::string>>{
           {}, {"Count"}, {"coun"}, {""}, {"count", "count"}, {"--help"}}) {
    const Run run = RunWith(arguments);
    CHECK(run.exitCode == 2);
    CHECK(run.reports ==
          std::vector<std::string>{"one argument is expected, which is one of: count, fail"});
  }
  CHECK(stepsTaken == 0);
}

}  // namespace dozewell::setup
