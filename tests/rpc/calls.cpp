#include "rpc/calls.h"

namespace dozewell {
namespace {

// Numbers of 4 bytes are at offsets that are multiples of 4.
const Bytes kEnum1 = {1, 0};
const Bytes kEnum1Padded = {1, 0, 0, 0};
const Bytes kRefused = {0};
const Bytes kDone = {1};

Bytes Block(int32_t first, int32_t second, int32_t third, int32_t fourth, int32_t fifth) {
  Bytes bytes;
  for (const int32_t number : {first, second, third, fourth, fifth}) {
    Append32(bytes, static_cast<uint32_t>(number));
  }
  return bytes;
}

// The results of a refused procedure: an output that the service left alone, and the answer 0.
Bytes RefusedAfter(size_t outputSize) {
  Bytes bytes(outputSize);
  bytes.push_back(0);
  return bytes;
}

}  // namespace

Bytes LongBytes(int32_t number) {
  Bytes bytes;
  Append32(bytes, static_cast<uint32_t>(number));
  return bytes;
}

Bytes Joined(const Bytes& first, const Bytes& second) {
  Bytes bytes = first;
  bytes.insert(bytes.end(), second.begin(), second.end());
  return bytes;
}

const std::vector<Call> kCalls = {
    {kPing, "Ping", {}, kDone, {}},
    {kGetDriverEnabled, "GetDriverEnabled", {}, RefusedAfter(1), {}},
    {kSetFeatureEnabled, "SetFeatureEnabled", {0}, kRefused, {}},
    {kGetFeatureEnabled, "GetFeatureEnabled", {}, {0, 1}, {}},
    {kSetWakeTime, "SetWakeTime", Joined(kEnum1Padded, Block(30, 6, 21, 11, 26)), kRefused, {0}},
    {kSetWakeRaw, "SetWakeRaw", Joined(kEnum1Padded, LongBytes(90)), kRefused, {0}},
    {kGetWakeTime, "GetWakeTime", kEnum1, RefusedAfter(20), {0}},
    {kGetWakeRaw, "GetWakeRaw", kEnum1, RefusedAfter(4), {0}},
    {kGetPowerSettings, "GetPowerSettings", {0x1F, 0, 1, 0}, RefusedAfter(20), {0, 2}},
    {kSetPowerSettings,
     "SetPowerSettings",
     Joined({0x1F, 0, 1, 0}, Block(10, 20, 30, 1, 0)),
     kRefused,
     {0, 2}},
    {kGetActiveScheme, "GetActiveScheme", {}, RefusedAfter(2), {}},
    {kSetActiveScheme, "SetActiveScheme", {3, 0}, kRefused, {0}},
    {kResetHistory, "ResetHistory", LongBytes(-1), kRefused, {}},
    {kSetStrength, "SetStrength", LongBytes(55), kDone, {}},
    {kGetStrength, "GetStrength", {}, Joined(LongBytes(55), kDone), {}},
};

}  // namespace dozewell
