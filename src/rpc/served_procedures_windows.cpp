// The functions that the generated server stubs call: those of procedures.h, in the wire's types.

#include <windows.h>

#include <cstdlib>

#include "dozewell_rpc.h"
#include "rpc/procedures.h"

namespace dozewell {
namespace {

boolean Wire(bool answer) { return answer ? 1 : 0; }

// The record whose five numbers the block holds.
template <typename Record>
Record* RecordInBlock(ValueBlock* block) {
  static_assert(sizeof(Record) == sizeof(ValueBlock));
  return reinterpret_cast<Record*>(block);
}

// Calls a procedure that sets a flag, and hands the flag to the wire when it succeeded.
template <typename Procedure>
boolean GetFlag(boolean* output, Procedure procedure) {
  bool flag = false;
  if (output == nullptr || !procedure(&flag)) return 0;
  *output = Wire(flag);
  return 1;
}

}  // namespace
}  // namespace dozewell

using dozewell::RecordInBlock;
using dozewell::Wire;

extern "C" {

void* __RPC_USER MIDL_user_allocate(size_t size) { return std::malloc(size); }
void __RPC_USER MIDL_user_free(void* memory) { std::free(memory); }

boolean Serve_Ping() { return Wire(dozewell::Ping()); }

boolean Serve_GetDriverEnabled(boolean* enabled) {
  return dozewell::GetFlag(enabled, dozewell::GetDriverEnabled);
}

boolean Serve_SetFeatureEnabled(boolean enable) {
  return Wire(dozewell::SetFeatureEnabled(enable != 0));
}

boolean Serve_GetFeatureEnabled(boolean* enabled) {
  return dozewell::GetFlag(enabled, dozewell::GetFeatureEnabled);
}

boolean Serve_SetWakeTime(WireTimer timer, ValueBlock* wakeTime) {
  return Wire(dozewell::SetWakeTime(static_cast<uint32_t>(timer),
                                    RecordInBlock<dozewell::WakeTime>(wakeTime)));
}

boolean Serve_SetWakeRaw(WireTimer timer, LONG count) {
  return Wire(dozewell::SetWakeRaw(static_cast<uint32_t>(timer), count));
}

boolean Serve_GetWakeTime(WireTimer timer, ValueBlock* wakeTime) {
  return Wire(dozewell::GetWakeTime(static_cast<uint32_t>(timer),
                                    RecordInBlock<dozewell::WakeTime>(wakeTime)));
}

boolean Serve_GetWakeRaw(WireTimer timer, LONG* count) {
  return Wire(
      dozewell::GetWakeRaw(static_cast<uint32_t>(timer), reinterpret_cast<int32_t*>(count)));
}

boolean Serve_GetPowerSettings(WireSettings mask, WireSource source, ValueBlock* settings) {
  return Wire(dozewell::GetPowerSettings(static_cast<uint32_t>(mask), static_cast<uint32_t>(source),
                                         RecordInBlock<dozewell::PowerTimeouts>(settings)));
}

boolean Serve_SetPowerSettings(WireSettings mask, WireSource source, ValueBlock* settings) {
  return Wire(dozewell::SetPowerSettings(static_cast<uint32_t>(mask), static_cast<uint32_t>(source),
                                         RecordInBlock<dozewell::PowerTimeouts>(settings)));
}

boolean Serve_GetActiveScheme(WireScheme* scheme) {
  uint32_t number = 0;
  if (scheme == nullptr || !dozewell::GetActiveScheme(&number)) return 0;
  *scheme = static_cast<WireScheme>(number);
  return 1;
}

boolean Serve_SetActiveScheme(WireScheme scheme) {
  return Wire(dozewell::SetActiveScheme(static_cast<uint32_t>(scheme)));
}

boolean Serve_ResetHistory(LONG) { return Wire(dozewell::ResetHistory()); }

boolean Serve_SetStrength(LONG strength) { return Wire(dozewell::SetStrength(strength)); }

boolean Serve_GetStrength(LONG* strength) {
  return Wire(dozewell::GetStrength(reinterpret_cast<int32_t*>(strength)));
}

}  // extern "C"
