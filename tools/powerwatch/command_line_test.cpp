#include "powerwatch/command_line.h"

#include <doctest/doctest.h>

#include <stdexcept>

namespace dozewell::powerwatch {
namespace {

struct Ran {
  int exitCode = 0;
  std::string did;
  std::string output;
  std::string error;
};

// `served`: the error code of serving.
Ran Run(const std::vector<std::string>& arguments, uint32_t served = 0) {
  Ran ran;
  ran.exitCode = RunPowerwatch(arguments,
                               {[&] {
                                  ran.did += "install ";
                                  return std::string("installed\n");
                                },
                                [&]() -> std::string {
                                  ran.did += "remove ";
                                  throw std::runtime_error("it is in use");
                                },
                                [&] {
                                  ran.did += "serve ";
                                  return served;
                                }},
                               {[&](const std::string& text) { ran.output += text; },
                                [&](const std::string& message) { ran.error += message; }});
  return ran;
}

}  // namespace

TEST_CASE("without arguments the watch serves, and says nothing") {
  const Ran ran = Run({});
  CHECK(ran.exitCode == 0);
  CHECK(ran.did == "serve ");
  CHECK(ran.output.empty());
}

TEST_CASE("a watch that somebody starts by hand says how it is used") {
  const Ran ran = Run({}, 1063);
  CHECK(ran.exitCode == 2);
  CHECK(ran.did == "serve ");
  CHECK(ran.output.find("dozewell-powerwatch install ") != std::string::npos);
}

TEST_CASE("installing and removing the watch are one argument each") {
  Ran ran = Run({"install"});
  CHECK(ran.exitCode == 0);
  CHECK(ran.did == "install ");
  CHECK(ran.output == "installed\n");
  ran = Run({"remove"});
  CHECK(ran.exitCode == 1);
  CHECK(ran.did == "remove ");
  CHECK(ran.output.empty());
  CHECK(ran.error == "it is in use");
}

TEST_CASE("other arguments do nothing but show the watch's usage") {
  for (const std::vector<std::string>& arguments :
       std::vector<std::vector<std::string>>{{"Install"}, {"install", "x"}, {"--help"}, {""}}) {
    const Ran ran = Run(arguments);
    CHECK(ran.exitCode == 2);
    CHECK(ran.did.empty());
    CHECK(ran.output.find("dozewell-powerwatch remove ") != std::string::npos);
  }
}

}  // namespace dozewell::powerwatch
