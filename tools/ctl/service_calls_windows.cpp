#include <windows.h>

#include <bit>
#include <cstdlib>
#include <type_traits>

#include "ctl/guarded_call.h"
#include "ctl/pipe_server.h"
#include "ctl/service_calls.h"
#include "dozewell_rpc.h"
#include "rpc/pipe_name.h"

extern "C" {

void* __RPC_USER MIDL_user_allocate(size_t size) { return std::malloc(size); }
void __RPC_USER MIDL_user_free(void* memory) { std::free(memory); }

}  // extern "C"

namespace dozewell::ctl {
namespace {

// The runtime takes texts as if it changed them, which it does not.
unsigned short* RpcText(const wchar_t* text) {
  return reinterpret_cast<unsigned short*>(const_cast<wchar_t*>(text));
}

// Makes the binding that the stubs use, once; no call is made yet.
RPC_STATUS Bind() {
  if (DozewellBinding != nullptr) return RPC_S_OK;
  ConnectToPipe();
  // While the service does not run, any program may own a pipe of that name. It may learn who
  // calls, often an administrator, but must not act in the caller's name.
  constexpr wchar_t kOptions[] = L"Security=Identification Dynamic True";
  unsigned short* text = nullptr;
  RPC_STATUS status = RpcStringBindingComposeW(nullptr, RpcText(kRpcProtocol), nullptr,
                                               RpcText(kRpcEndpoint), RpcText(kOptions), &text);
  if (status != RPC_S_OK) return status;
  status = RpcBindingFromStringBindingW(text, &DozewellBinding);
  RpcStringFreeW(&text);
  return status;
}

// Makes the call, which answers the service's boolean.
template <typename Procedure>
CallResult Call(Procedure procedure) {
  static_assert(std::is_trivially_destructible_v<Procedure>);
  struct Context {
    Procedure procedure;
    boolean answer;
  };
  Context context = {procedure, 0};
  uint32_t status = static_cast<uint32_t>(Bind());
  if (status == RPC_S_OK) {
    status = GuardedCall(
        [](void* at) {
          auto& called = *static_cast<Context*>(at);
          called.answer = called.procedure();
        },
        &context);
  }
  if (status != RPC_S_OK) return {CallOutcome::Unreachable, status};
  return {context.answer != 0 ? CallOutcome::Done : CallOutcome::Refused, 0};
}

// The same for a procedure with an output, which may be overwritten by a call that fails.
template <typename Wire, typename Output, typename Procedure>
CallResult CallForOutput(Output& output, Procedure procedure) {
  Wire received = {};
  const CallResult result = Call([&received, procedure] { return procedure(&received); });
  if (!result.IsDone()) return result;
  if constexpr (std::is_class_v<Wire>) {
    output = std::bit_cast<Output>(received);
  } else if constexpr (std::is_same_v<Output, bool>) {
    output = received != 0;
  } else {
    output = static_cast<Output>(received);
  }
  return result;
}

// The record's five numbers in a block.
template <typename Record>
ValueBlock BlockOf(const Record& record) {
  return std::bit_cast<ValueBlock>(record);
}

WireTimer TimerOf(uint32_t timer) { return static_cast<WireTimer>(timer); }
WireSettings SettingsOf(uint32_t mask) { return static_cast<WireSettings>(mask); }
WireSource SourceOf(uint32_t source) { return static_cast<WireSource>(source); }

}  // namespace

bool HasCalledService() { return DozewellBinding != nullptr; }

CallResult CallPing() {
  return Call([] { return Call_Ping(); });
}

CallResult CallGetDriverEnabled(bool& enabled) {
  return CallForOutput<boolean>(enabled, [](boolean* out) { return Call_GetDriverEnabled(out); });
}

CallResult CallSetFeatureEnabled(bool enable) {
  return Call([enable] { return Call_SetFeatureEnabled(enable ? 1 : 0); });
}

CallResult CallGetFeatureEnabled(bool& enabled) {
  return CallForOutput<boolean>(enabled, [](boolean* out) { return Call_GetFeatureEnabled(out); });
}

CallResult CallSetWakeTime(uint32_t timer, const WakeTime& wakeTime) {
  ValueBlock block = BlockOf(wakeTime);
  return Call([timer, &block] { return Call_SetWakeTime(TimerOf(timer), &block); });
}

CallResult CallSetWakeRaw(uint32_t timer, int32_t count) {
  return Call([timer, count] { return Call_SetWakeRaw(TimerOf(timer), count); });
}

CallResult CallGetWakeTime(uint32_t timer, WakeTime& wakeTime) {
  return CallForOutput<ValueBlock>(
      wakeTime, [timer](ValueBlock* out) { return Call_GetWakeTime(TimerOf(timer), out); });
}

CallResult CallGetWakeRaw(uint32_t timer, int32_t& count) {
  return CallForOutput<LONG>(count,
                             [timer](LONG* out) { return Call_GetWakeRaw(TimerOf(timer), out); });
}

CallResult CallGetPowerSettings(uint32_t mask, uint32_t source, PowerTimeouts& settings) {
  return CallForOutput<ValueBlock>(settings, [mask, source](ValueBlock* out) {
    return Call_GetPowerSettings(SettingsOf(mask), SourceOf(source), out);
  });
}

CallResult CallSetPowerSettings(uint32_t mask, uint32_t source, const PowerTimeouts& settings) {
  ValueBlock block = BlockOf(settings);
  return Call([mask, source, &block] {
    return Call_SetPowerSettings(SettingsOf(mask), SourceOf(source), &block);
  });
}

CallResult CallGetActiveScheme(uint32_t& scheme) {
  return CallForOutput<WireScheme>(scheme,
                                   [](WireScheme* out) { return Call_GetActiveScheme(out); });
}

CallResult CallSetActiveScheme(uint32_t scheme) {
  return Call([scheme] { return Call_SetActiveScheme(static_cast<WireScheme>(scheme)); });
}

CallResult CallResetHistory() {
  return Call([] { return Call_ResetHistory(0); });
}

CallResult CallSetStrength(int32_t strength) {
  return Call([strength] { return Call_SetStrength(strength); });
}

CallResult CallGetStrength(int32_t& strength) {
  return CallForOutput<LONG>(strength, [](LONG* out) { return Call_GetStrength(out); });
}

}  // namespace dozewell::ctl
