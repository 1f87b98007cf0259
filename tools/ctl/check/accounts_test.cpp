#include "ctl/check/accounts.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

namespace dozewell::ctl {
namespace {

constexpr uint32_t kReadRight = 0x1;
constexpr uint32_t kWriteRight = 0x2;
constexpr const char* kOwn = "S-1-5-21-7";

using Names = std::vector<std::string>;

}  // namespace

TEST_CASE("the system, administrators and the service's own account are trusted") {
  for (const char* sid : {"S-1-5-18", "S-1-5-32-544", "S-1-3-0", "S-1-3-4", kOwn}) {
    CHECK(IsTrusted(sid, kOwn));
  }
  for (const char* sid : {"S-1-1-0", "S-1-5-11", "S-1-5-19", "S-1-5-32-545", "S-1-5-21-8", ""}) {
    CHECK_FALSE(IsTrusted(sid, kOwn));
  }
  CHECK_FALSE(IsTrusted("", ""));
}

TEST_CASE("strangers are those who are not trusted and have one of the rights, each once") {
  AccessList access;
  access.allowed = {{"S-1-5-18", kWriteRight},
                    {"S-1-5-32-545", kReadRight},
                    {"S-1-1-0", kWriteRight, true},
                    {"S-1-5-11", kWriteRight | kReadRight},
                    {"S-1-5-11", kWriteRight},
                    {"S-1-5-21-8", kWriteRight},
                    {kOwn, kWriteRight}};
  CHECK(StrangersWith(kWriteRight, access, kOwn) == Names{"signed-in users", "S-1-5-21-8"});
  CHECK(StrangersWith(kReadRight, access, kOwn) == Names{"Users", "signed-in users"});
  access.opensToAll = true;
  CHECK(StrangersWith(kWriteRight, access, kOwn) == Names{"Everyone"});
}

TEST_CASE("each right to change something counts, and none to read") {
  for (const uint32_t right :
       {0x2U, 0x4U, 0x10U, 0x40U, 0x100U, 0x10000U, 0x40000U, 0x80000U, 0x10000000U, 0x40000000U}) {
    CHECK((kRightsToChange & right) == right);
  }
  CHECK((kRightsToChange & 0x1200A9U) == 0);
  CHECK((kRightsToChange & 0x80000000U) == 0);
}

}  // namespace dozewell::ctl
