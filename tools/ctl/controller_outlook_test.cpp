#include "ctl/controller_outlook.h"

#include <doctest/doctest.h>

namespace dozewell::ctl {
namespace {

// All signs say that the controller runs.
ControllerSigns Good() { return {true, true, 10, 10, true, ""}; }

void CheckOutlook(const ControllerSigns& signs, Expected runs, const char* why) {
  const ControllerOutlook outlook = ExpectController(signs);
  CHECK(outlook.runs == runs);
  CHECK(outlook.why == why);
}

}  // namespace

TEST_CASE("the controller is expected to run when nothing speaks against it") {
  CheckOutlook(Good(), Expected::Yes, "the feature is on and enough start attempts were made");
}

TEST_CASE("the controller is not expected to run when anything keeps it from") {
  ControllerSigns signs = Good();
  signs.serviceAnswers = false;
  CheckOutlook(signs, Expected::No, "the service does not answer");
  signs = Good();
  signs.featureEnabled = false;
  CheckOutlook(signs, Expected::No, "the feature is off");
  signs = Good();
  signs.currentAttempt = 9;
  CheckOutlook(signs, Expected::No,
               "too few start attempts yet; dozewellctl enable starts it at once");
}

TEST_CASE("unusable settings do not end a controller that runs") {
  ControllerSigns signs = Good();
  signs.engineProblem = "No weigths specified";
  CheckOutlook(signs, Expected::Maybe,
               "only if it was started earlier, as it cannot be built now: No weigths specified");
}

TEST_CASE("without counters only a client can have started the controller") {
  ControllerSigns signs = Good();
  signs.totalAttempts = std::nullopt;
  CheckOutlook(signs, Expected::Maybe, "only if the feature was enabled since the service started");
  signs = Good();
  signs.currentAttempt = std::nullopt;
  CheckOutlook(signs, Expected::Maybe, "only if the feature was enabled since the service started");
}

TEST_CASE("the attempt that completes the count may not have started the controller") {
  ControllerSigns signs = Good();
  signs.everStarted = false;
  CheckOutlook(signs, Expected::Maybe, "at the latest from the next start attempt on");
  signs.currentAttempt = 0;
  signs.totalAttempts = 0;
  CheckOutlook(signs, Expected::Yes, "the feature is on and enough start attempts were made");
}

TEST_CASE("start attempts are shown with what they mean") {
  CHECK(AttemptsText(10, 10) == "10 of 10: the controller starts with the service");
  CHECK(AttemptsText(0, 0) == "0 of 0: the controller starts with the service");
  CHECK(AttemptsText(3, 10) == "3 of 10: 7 more starts or resumes only count");
  CHECK(AttemptsText(9, 10) == "9 of 10: 1 more start or resume only counts");
  CHECK(AttemptsText(3, {}) == "TotalAttempts is not set: the controller never starts by itself");
  CHECK(AttemptsText({}, 3) == "CurrentAttempt is not set: the controller never starts by itself");
}

}  // namespace dozewell::ctl
