#include "service/install.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "base/file.h"
#include "fakes/journal.h"
#include "fakes/machine.h"
#include "fakes/service_fake.h"
#include "support/calls.h"

namespace dozewell {
namespace {

// A machine with a service manager, and a current folder of its own.
struct Manager {
  fakes::Machine machine;
  std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::path folder = std::filesystem::temp_directory_path() / "dozewell-install-test";

  Manager() {
    std::filesystem::create_directory(folder);
    std::filesystem::current_path(folder);
  }
  ~Manager() {
    std::filesystem::current_path(before);
    std::filesystem::remove_all(folder);
  }
  Manager(const Manager&) = delete;
  Manager& operator=(const Manager&) = delete;

  Calls Run(void (*run)()) {
    fakes::TakeJournal();
    run();
    return fakes::TakeJournal();
  }
};

// The name is also the display name; the path is quoted, since it may hold blanks.
const char* const kCreate =
    "service: create DozewellService \"C:\\Program Files\\Dozewell\\DozewellService.exe\"";

const Calls kInstalled = {"service: open manager to create",
                          kCreate,
                          "report 0 Service is installed successfully.\n",
                          "service: describe Brevan dozewell service",
                          "service: delay start",
                          "service: start",
                          "service: close",
                          "service: close"};
const Calls kUninstalled = {"service: open manager",
                            "service: open DozewellService",
                            "service: stop",
                            "service: delete",
                            "report 0 Service is uninstalled successfully.\n",
                            "service: close",
                            "service: close"};

// `calls` with one more added after one of them.
Calls With(Calls calls, const std::string& call, const std::string& added) {
  const auto place = std::find(calls.begin(), calls.end(), call);
  REQUIRE(place != calls.end());
  calls.insert(place + 1, added);
  return calls;
}

}  // namespace

TEST_CASE("installing creates the service, describes it, delays its start and starts it") {
  Manager manager;
  CHECK(manager.Run(InstallService) == kInstalled);
  CHECK(fakes::service.exists);
}

TEST_CASE("each failure of an installation is reported with its code") {
  struct Row {
    int failing;
    Calls calls;
  };
  const Row rows[] = {
      {1, {"service: open manager to create", "report 1 OpenSCManager failed, error code = 5\n"}},
      {2,
       {"service: open manager to create", kCreate,
        "report 1 Failed to create service, error code = 5\n", "service: close"}},
      // The results of describing and delaying are ignored.
      {3, kInstalled},
      {4, kInstalled},
      {5, With(kInstalled, "service: start", "report 1 Failed to start service! Error code = 5\n")},
  };
  for (const Row& row : rows) {
    Manager manager;
    fakes::service.failer.firstFailing = row.failing;
    CAPTURE(row.failing);
    CHECK(manager.Run(InstallService) == row.calls);
    CHECK(fakes::service.exists == (row.failing > 2));
  }
}

TEST_CASE("installing a service that exists is reported and changes nothing") {
  Manager manager;
  fakes::service.exists = true;
  CHECK(manager.Run(InstallService) ==
        Calls{"service: open manager to create", kCreate,
              "report 1 Failed to create service, error code = 1073\n", "service: close"});
  CHECK(fakes::service.exists);
}

TEST_CASE("uninstalling stops and deletes the service and then the log file") {
  Manager manager;
  fakes::service.exists = true;
  REQUIRE(WriteWholeFile(L"DozewellService.log", "x", 1));
  REQUIRE(WriteWholeFile(L"other.log", "x", 1));
  CHECK(manager.Run(UninstallService) == kUninstalled);
  CHECK_FALSE(fakes::service.exists);
  CHECK_FALSE(ReadWholeFile(L"DozewellService.log").has_value());
  CHECK(ReadWholeFile(L"other.log").has_value());
}

TEST_CASE("each failure of an uninstallation is reported, and the log file is deleted") {
  struct Row {
    int failing;
    Calls calls;
  };
  Calls notDeleted = kUninstalled;
  notDeleted[4] = "report 1 Failed to delete service! Error code = 5\n";
  const Row rows[] = {
      {1, {"service: open manager", "report 1 OpenSCManager failed, error code = 5\n"}},
      {2,
       {"service: open manager", "service: open DozewellService",
        "report 1 OpenService failed, error code = 5\n", "service: close"}},
      {3, With(kUninstalled, "service: stop", "report 1 Failed to stop service! Error code = 5\n")},
      {4, notDeleted},
  };
  for (const Row& row : rows) {
    Manager manager;
    fakes::service.exists = true;
    REQUIRE(WriteWholeFile(L"DozewellService.log", "x", 1));
    fakes::service.failer.firstFailing = row.failing;
    CAPTURE(row.failing);
    CHECK(manager.Run(UninstallService) == row.calls);
    CHECK(fakes::service.exists == (row.failing != 3));
    CHECK_FALSE(ReadWholeFile(L"DozewellService.log").has_value());
  }
}

TEST_CASE("uninstalling a service that is not there is reported, and the log file is deleted") {
  Manager manager;
  REQUIRE(WriteWholeFile(L"DozewellService.log", "x", 1));
  CHECK(manager.Run(UninstallService) ==
        Calls{"service: open manager", "service: open DozewellService",
              "report 1 OpenService failed, error code = 1060\n", "service: close"});
  CHECK_FALSE(ReadWholeFile(L"DozewellService.log").has_value());
}

}  // namespace dozewell
