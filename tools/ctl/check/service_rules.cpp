#include <algorithm>

#include "common/text.h"
#include "ctl/check/accounts.h"
#include "ctl/check/finding.h"
#include "ctl/check/program_path.h"
#include "ctl/unreachable_text.h"
#include "service/service_host.h"

namespace dozewell::ctl {
namespace {

constexpr const char* kInstall = "install it with the package";
constexpr const char* kRepair = "as administrator, repair the package: msiexec /fa PACKAGE";
constexpr const char* kShutdownPrivilege = "SeShutdownPrivilege";

std::string ErrorText(uint32_t error) { return "not known (error " + std::to_string(error) + ")"; }

std::string JoinNames(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
  return text;
}

// The rest of a line where the service is not installed or not to be read.
Finding NoConfiguration(const CheckFacts& facts) {
  return Note(facts.configuration.error == kErrorServiceMissing
                  ? "the service is not installed"
                  : ErrorText(facts.configuration.error));
}

std::string OwnAccount(const CheckFacts& facts) {
  return facts.token ? facts.token->account : std::string();
}

Finding JudgeState(const CheckFacts& facts) {
  const std::string state = ServiceStateText(facts.service);
  if (facts.service.error == kErrorServiceMissing) return Bad(state, kInstall);
  if (facts.service.error != 0) return Note(state);
  if (facts.service.state == kServiceRunning) {
    return Ok(state + ", process " + std::to_string(facts.service.process));
  }
  if (facts.service.state == kServicePaused) return Note(state);
  return Bad(state, "as administrator, net start DozewellService");
}

Finding JudgeAccount(const CheckFacts& facts) {
  if (facts.configuration.error != 0) return NoConfiguration(facts);
  const std::string& account = facts.configuration.account;
  if (EqualIgnoringCase(account, "LocalSystem")) return Ok(account);
  return Bad(account + ", which lacks rights that the service needs",
             "as administrator, sc config DozewellService obj= LocalSystem");
}

Finding JudgeStart(const CheckFacts& facts) {
  if (facts.configuration.error != 0) return NoConfiguration(facts);
  constexpr const char* kDelay = "as administrator, sc config DozewellService start= delayed-auto";
  switch (facts.configuration.startType) {
    case kStartsByItself:
      break;
    case kStartsOnDemand:
      return Bad("only when somebody starts it", kDelay);
    case kNeverStarts:
      return Bad("disabled", kDelay);
    default:
      return Bad("of type " + std::to_string(facts.configuration.startType), kDelay);
  }
  if (!facts.configuration.startsDelayed) {
    return Note("by itself; whether delayed is not known");
  }
  if (!*facts.configuration.startsDelayed) return Note("by itself, not delayed", kDelay);
  return Ok("by itself, some minutes after Windows");
}

Finding JudgeRestarts(const CheckFacts& facts) {
  if (facts.configuration.error != 0) return NoConfiguration(facts);
  const auto& restarts = facts.configuration.restarts;
  if (!restarts) return Note("not known: Windows does not tell");
  const bool restartsFirst = !restarts->empty() && restarts->front() >= 0;
  if (!restartsFirst) return Note("none: after a crash it stays off", kRepair);
  std::string text = "after";
  for (const int64_t delay : *restarts) {
    if (delay < 0) break;
    text += (text == "after" ? " " : ", ") + std::to_string(delay / 1000) + " s";
  }
  return Ok(text);
}

Finding JudgeProgram(const CheckFacts& facts) {
  if (facts.configuration.error != 0) return NoConfiguration(facts);
  const std::string& command = facts.configuration.command;
  if (IsAmbiguous(command)) {
    return Bad(command + " is without quotation marks: another program may run in its place",
               kRepair);
  }
  const PathAccess& program = facts.program;
  if (program.error == kErrorNoFile || program.error == kErrorNoPath) {
    return Bad(program.path + " is not there", kInstall);
  }
  if (program.error != 0) return Note(program.path + ": rights " + ErrorText(program.error));
  if (program.access.error != 0) {
    return Note(program.path + ": rights " + ErrorText(program.access.error));
  }
  const auto strangers = StrangersWith(kRightsToChange, program.access, OwnAccount(facts));
  if (strangers.empty()) return Ok(program.path);
  return Bad(program.path + " can be replaced by " + JoinNames(strangers),
             "install it below Program Files");
}

Finding JudgePrivilege(const CheckFacts& facts) {
  if (facts.configuration.error != 0) return NoConfiguration(facts);
  const auto& wanted = facts.configuration.privileges;
  const bool isKept =
      !wanted || wanted->empty() || std::ranges::find(*wanted, kShutdownPrivilege) != wanted->end();
  if (!isKept) {
    return Bad(
        "its configuration gives up SeShutdownPrivilege, without which it cannot put the "
        "machine to sleep",
        "as administrator, sc privs DozewellService \"\"");
  }
  const std::string configured =
      !wanted ? "its configuration is not known"
              : (wanted->empty() ? "it keeps all of its account" : "it keeps SeShutdownPrivilege");
  if (!facts.token) return Note(configured + "; it does not run");
  if (facts.token->error != 0) {
    return Note(configured + "; its token: not known, needs an administrator");
  }
  if (!facts.token->maySleep) {
    return Bad(
        "its token lacks SeShutdownPrivilege, without which it cannot put the machine to "
        "sleep",
        "run it as LocalSystem, and look for a policy that takes the right from it");
  }
  return Ok(configured + "; its token has SeShutdownPrivilege");
}

Finding JudgeRpc(const CheckFacts& facts) {
  if (facts.ping.outcome == CallOutcome::Unreachable) {
    return Bad("does not answer", UnreachableText(facts.ping.status, facts.service));
  }
  const bool isStranger =
      facts.service.error == 0 && facts.pipeServer && *facts.pipeServer != facts.service.process;
  if (isStranger) {
    return Bad("process " + std::to_string(*facts.pipeServer) + " answers in the service's place",
               "unless it is DozewellService -local in a console, end it and start the service");
  }
  return Ok("answers");
}

// Connecting takes the right to read or to write.
Finding JudgePipe(const CheckFacts& facts) {
  constexpr uint32_t kRightsToConnect = 0xD0000003;
  if (facts.ping.outcome == CallOutcome::Unreachable) return Note("not known: nobody serves it");
  if (facts.pipe.error != 0) return Note(ErrorText(facts.pipe.error));
  const auto strangers = StrangersWith(kRightsToConnect, facts.pipe, OwnAccount(facts));
  if (strangers.empty()) return Ok("only the system and administrators may connect");
  return Note("open to " + JoinNames(strangers) +
                  ", from other machines too where file sharing lets them in",
              "keep file sharing closed to those who should not steer it");
}

constexpr CheckRule kServiceRules[] = {
    {"service", "Service", JudgeState},
    {"account", "Account", JudgeAccount},
    {"start", "Start", JudgeStart},
    {"restarts", "Restarts", JudgeRestarts},
    {"program", "Program", JudgeProgram},
    {"privilege", "Privilege", JudgePrivilege},
    {"rpc", "RPC", JudgeRpc},
    {"pipe", "Pipe", JudgePipe},
};

}  // namespace

std::span<const CheckRule> ServiceRules() { return kServiceRules; }

}  // namespace dozewell::ctl
