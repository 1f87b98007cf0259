#include "setup/setup.h"

#include <doctest/doctest.h>

#include <stdexcept>

namespace dozewell::setup {
namespace {

int stepsTaken = 0;

std::string Count(const std::string&) {
  ++stepsTaken;
  return "";
}

constexpr Step kSteps[] = {
    {"count", nullptr, Count},
    {"fail", nullptr,
     [](const std::string&) -> std::string { throw std::runtime_error("the disk is full"); }},
    {"open", "DOOR", [](const std::string& door) { return door.empty() ? "" : door + " is open"; }},
};

using Texts = std::vector<std::string>;

struct Run {
  int exitCode = 0;
  Texts errors;
  Texts information;
};

Run RunWith(const Texts& arguments) {
  Run run;
  run.exitCode =
      RunSetup(arguments, kSteps,
               {[&run](const std::string& message) { run.errors.push_back(message); },
                [&run](const std::string& message) { run.information.push_back(message); }});
  return run;
}

}  // namespace

TEST_CASE("setup takes the step that is named, once") {
  stepsTaken = 0;
  const Run run = RunWith({"count"});
  CHECK(run.exitCode == 0);
  CHECK(run.errors.empty());
  CHECK(run.information.empty());
  CHECK(stepsTaken == 1);
}

TEST_CASE("a setup step that fails is reported with its reason") {
  const Run run = RunWith({"fail"});
  CHECK(run.exitCode == 1);
  CHECK(run.errors == Texts{"the disk is full"});
  CHECK(run.information.empty());
}

TEST_CASE("a setup step gets its argument, and what it has to say is no error") {
  Run run = RunWith({"open", "the gate"});
  CHECK(run.exitCode == 0);
  CHECK(run.errors.empty());
  CHECK(run.information == Texts{"the gate is open"});
  run = RunWith({"open", ""});
  CHECK(run.exitCode == 0);
  CHECK(run.information.empty());
}

TEST_CASE("setup without exactly one step takes none and names them all") {
  stepsTaken = 0;
  for (const Texts& arguments : std::vector<Texts>{{},
                                                   {"Count"},
                                                   {"coun"},
                                                   {""},
                                                   {"count", "count"},
                                                   {"--help"},
                                                   {"open"},
                                                   {"open", "a", "b"}}) {
    const Run run = RunWith(arguments);
    CHECK(run.exitCode == 2);
    CHECK(run.errors == Texts{"one step is expected, which is one of: count, fail, open DOOR"});
  }
  CHECK(stepsTaken == 0);
}

}  // namespace dozewell::setup
