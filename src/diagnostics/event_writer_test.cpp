#include "diagnostics/event_writer.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "fakes/event_log_fake.h"
#include "support/calls.h"

namespace dozewell {

TEST_CASE("the messages of the service and its RPC server read as they should") {
  struct Row {
    const wchar_t* format;
    uint16_t eventType;
    uint32_t argument;
    const char* report;
  };
  const Row rows[] = {
      {L"StartServiceCtrlDispatcher failed, error code = %d\n", kEventError, 1063,
       "1 StartServiceCtrlDispatcher failed, error code = 1063\n"},
      {L"OpenSCManager failed, error code = %d\n", kEventError, 5,
       "1 OpenSCManager failed, error code = 5\n"},
      {L"Failed to create service, error code = %d\n", kEventError, 1073,
       "1 Failed to create service, error code = 1073\n"},
      {L"Service is installed successfully.\n", kEventSuccess, 0,
       "0 Service is installed successfully.\n"},
      {L"Failed to start service! Error code = %d\n", kEventError, 1053,
       "1 Failed to start service! Error code = 1053\n"},
      {L"OpenService failed, error code = %d\n", kEventError, 1060,
       "1 OpenService failed, error code = 1060\n"},
      {L"Failed to stop service! Error code = %d\n", kEventError, 1062,
       "1 Failed to stop service! Error code = 1062\n"},
      {L"Failed to delete service! Error code = %d\n", kEventError, 1072,
       "1 Failed to delete service! Error code = 1072\n"},
      {L"Service is uninstalled successfully.\n", kEventSuccess, 0,
       "0 Service is uninstalled successfully.\n"},
      {L"RegisterServiceCtrlHandler failed %d\n", kEventError, 1059,
       "1 RegisterServiceCtrlHandler failed 1059\n"},
      {L"SetServiceStatus failed, error code = %d\n", kEventError, 6,
       "1 SetServiceStatus failed, error code = 6\n"},
      {L"SetServiceStatus error %ld\n", kEventError, 6, "1 SetServiceStatus error 6\n"},
      {L"Unrecognized opcode %ld\n", kEventError, 14, "1 Unrecognized opcode 14\n"},
      {L"TotalAttempts or CurrentAttempt value is not defined in registry...", kEventSuccess, 0,
       "0 TotalAttempts or CurrentAttempt value is not defined in registry..."},
      {L"RpcServerUseProtseqEp returned 0x%x\n", kEventError, 1740,
       "1 RpcServerUseProtseqEp returned 0x6cc\n"},
      {L"RpcServerRegisterIf returned 0x%x\n", kEventError, 1711,
       "1 RpcServerRegisterIf returned 0x6af\n"},
      {L"StartRPCServer: RpcServerRegisterAuthInfo() failed!", kEventError, 1747,
       "1 StartRPCServer: RpcServerRegisterAuthInfo() failed!"},
      {L"RpcServerListen returned: 0x%x\n", kEventError, 1713,
       "1 RpcServerListen returned: 0x6b1\n"},
      {L"StartRPCServer: RpcMgmtWaitServerListen() failed!", kEventError, 1715,
       "1 StartRPCServer: RpcMgmtWaitServerListen() failed!"},
      {L"StopRPCServer: RpcMgmtStopServerListening() failed!", kEventError, 1715,
       "1 StopRPCServer: RpcMgmtStopServerListening() failed!"},
  };
  for (const Row& row : rows) {
    fakes::eventLog = {};
    LogServiceEvent(row.format, row.argument, row.eventType);
    CHECK(fakes::eventLog.After("report ") == Calls{row.report});
  }
}

TEST_CASE("the source is opened and closed for every message") {
  fakes::eventLog = {};
  LogServiceEvent(L"Optimizer runtime %d\n", 9, kEventInformation);
  LogServiceEvent(L"Optimizer skipped\n", 4, kEventSuccess);
  CHECK(fakes::eventLog.calls == Calls{"open Dozewell Service", "report 4 Optimizer runtime 9\n",
                                       "close", "open Dozewell Service",
                                       "report 0 Optimizer skipped\n", "close"});
}

TEST_CASE("without a source nothing is reported, and the null source is closed all the same") {
  fakes::eventLog = {};
  fakes::eventLog.openFailer.firstFailing = 1;
  LogServiceEvent(L"text", 0, kEventError);
  CHECK(fakes::eventLog.calls == Calls{"open Dozewell Service", "close null"});
}

TEST_CASE("a format of 999 characters is reported, one of 1000 is not") {
  const std::wstring longest = std::wstring(997, L'x') + L"%d";
  fakes::eventLog = {};
  LogServiceEvent(longest.c_str(), 0x80000000, kEventError);
  CHECK(fakes::eventLog.After("report ") == Calls{"1 " + std::string(997, 'x') + "-2147483648"});

  fakes::eventLog = {};
  LogServiceEvent((longest + L"x").c_str(), 0, kEventError);
  CHECK(fakes::eventLog.calls == Calls{"open Dozewell Service", "close"});
}

TEST_CASE("a full log is cleared once and the same event reported once more") {
  fakes::eventLog = {};
  fakes::eventLog.reportFailer.firstFailing = 1;
  SUBCASE("and then taken") { fakes::eventLog.reportFailer.failures = 1; }
  SUBCASE("and then given up") { fakes::eventLog.reportFailer.failures = 2; }
  LogServiceEvent(L"code %d", 7, kEventError);
  CHECK(fakes::eventLog.calls ==
        Calls{"open Dozewell Service", "report 1 code 7", "clear", "report 1 code 7", "close"});
}

TEST_CASE("an error of the state machine is logged and then traced") {
  fakes::eventLog = {};
  ReportStateMachineError(L"SM Error: State: Active, NULL event");
  CHECK(fakes::eventLog.calls == Calls{"open Dozewell Service",
                                       "report 1 SM Error: State: Active, NULL event", "close",
                                       "trace SM Error: State: Active, NULL event"});
}

TEST_CASE("the error code of the state machine stands in for a conversion in the log alone") {
  fakes::eventLog = {};
  ReportStateMachineError(L"0x%x");
  CHECK(fakes::eventLog.calls ==
        Calls{"open Dozewell Service", "report 1 0x80004005", "close", "trace 0x%x"});
}

TEST_CASE("narrow text is widened byte by byte, logged and then traced") {
  fakes::eventLog = {};
  LogNarrowAndTrace("No weigths specified \x01\x7F\x80\xE9\xFF");
  const std::string text = "No weigths specified \x01\x7F\xC2\x80\xC3\xA9\xC3\xBF";
  CHECK(fakes::eventLog.calls ==
        Calls{"open Dozewell Service", "report 1 " + text, "close", "trace " + text});
}

TEST_CASE("the argument of narrow text is 0") {
  fakes::eventLog = {};
  LogNarrowAndTrace("%d %s");
  CHECK(fakes::eventLog.calls ==
        Calls{"open Dozewell Service", "report 1 0 %s", "close", "trace %d %s"});
}

TEST_CASE("narrow text that is missing is an unknown exception, empty text is empty") {
  fakes::eventLog = {};
  LogNarrowAndTrace(nullptr);
  LogNarrowAndTrace("");
  CHECK(fakes::eventLog.calls == Calls{"open Dozewell Service", "report 1 Unknown exception",
                                       "close", "trace Unknown exception", "open Dozewell Service",
                                       "report 1 ", "close", "trace "});
}

TEST_CASE("narrow text that is too long for the log is traced in full") {
  fakes::eventLog = {};
  const std::string text(3000, 'x');
  LogNarrowAndTrace(text.c_str());
  CHECK(fakes::eventLog.calls == Calls{"open Dozewell Service", "close", "trace " + text});
}

}  // namespace dozewell
