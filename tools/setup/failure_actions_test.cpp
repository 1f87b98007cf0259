#include "setup/failure_actions.h"

#include <doctest/doctest.h>

#include <stdexcept>

namespace dozewell::setup {

TEST_CASE("what is done on failures is a text and read again from it") {
  const FailureActions restarts = {86400, {{1, 60'000}, {1, 300'000}, {0, 0}}};
  CHECK(TextOf(restarts) == L"86400,1/60000,1/300000,0/0");
  CHECK(FailureActionsOf(TextOf(restarts)) == restarts);
  const FailureActions none = {4'294'967'295, {}};
  CHECK(TextOf(none) == L"4294967295");
  CHECK(FailureActionsOf(TextOf(none)) == none);
}

TEST_CASE("a text that does not say what is done on failures is refused") {
  for (const wchar_t* const text : {L"", L"x", L"1,", L"1,2", L"1,2/", L"1,2/3 ", L"1/2"}) {
    CHECK_THROWS_AS(FailureActionsOf(text), std::runtime_error);
  }
}

}  // namespace dozewell::setup
