#include <cstdint>
#include <limits>
#include <string>

#include "rpc/calls.h"
#include "rpc/observed_state.h"
#include "rpc/pipe.h"
#include "rpc/wire_groups.h"

namespace dozewell {
namespace {

std::string Hex(const Bytes& bytes) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  for (const uint8_t byte : bytes) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return text;
}

void ExpectResults(const Bytes& found, const Bytes& expected) {
  Expect(found == expected, Hex(found) + " came, not " + Hex(expected));
}

// The acknowledgment ends with the one context's result, its reason and the transfer syntax.
void TestBinding() {
  Pipe pipe;
  Expect(pipe.Write(Bind(kControlInterface, kNdr)), "the service does not take it");
  const Reply reply = pipe.Read(kHangMs);
  Expect(reply.outcome == Reply::kPacket && TypeOf(reply.packet) == PacketType::kBindAck,
         Describe(reply));
  Bytes accepted;
  Append32(accepted, 0);
  Append(accepted, kNdr);
  Expect(reply.packet.size() > kHeaderSize + accepted.size(), "the acknowledgment is too short");
  ExpectResults({reply.packet.end() - static_cast<ptrdiff_t>(accepted.size()), reply.packet.end()},
                accepted);
}

void TestOneConnection() {
  BoundPipe pipe;
  for (const Call& call : kCalls) {
    ExpectResults(pipe.Call(call.procedure, call.arguments), call.results);
  }
}

void TestFragments() {
  const Call& call = kCalls.at(kSetWakeTime);
  const auto part = [&](ptrdiff_t from, uint8_t fragment) {
    const auto begin = call.arguments.begin() + from;
    return Request(kSetWakeTime, {begin, begin + 8}, fragment);
  };
  BoundPipe pipe;
  Expect(pipe.Write(part(0, kFirstFragment)) && pipe.Write(part(8, 0)),
         "the service does not take it");
  const Reply reply = pipe.Send(part(16, kLastFragment));
  Expect(reply.outcome == Reply::kPacket && TypeOf(reply.packet) == PacketType::kResponse,
         Describe(reply));
  ExpectResults(ResultsOf(reply.packet), call.results);
}

// Without the driver the answer is 0, although everything else is done.
void TestSwitch(uint8_t flag, bool on) {
  ResetState();
  BoundPipe pipe;
  ExpectResults(pipe.Call(kSetFeatureEnabled, {flag}), {0});
  Expect(StoredFeature() == (on ? 1U : 0U), "stored as " + std::to_string(StoredFeature()));
  ExpectResults(pipe.Call(kGetFeatureEnabled, {}), {static_cast<uint8_t>(on ? 1 : 0), 1});
  // Only a running controller accepts a reset.
  ExpectResults(pipe.Call(kResetHistory, LongBytes(0)), {static_cast<uint8_t>(on ? 1 : 0)});
}

void TestStrength(int32_t strength) {
  BoundPipe pipe;
  ExpectResults(pipe.Call(kSetStrength, LongBytes(strength)), {1});
  Expect(StoredStrength() == std::to_string(strength), "stored as " + StoredStrength());
  ExpectResults(pipe.Call(kGetStrength, {}), Joined(LongBytes(strength), {1}));
}

}  // namespace

void TestWellFormedCalls(Results& results) {
  results.Run("a binding to the interface is acknowledged for NDR 2.0", TestBinding);
  ResetState();
  for (const Call& call : kCalls) {
    results.Run(std::string(call.name) + " is answered", [&] {
      ExpectResults(BoundPipe().Call(call.procedure, call.arguments), call.results);
    });
  }
  results.Run("one connection carries calls of all procedures", TestOneConnection);
  results.Run("a call in three fragments is put together", TestFragments);
  results.Run("the feature is switched off by 0", [] { TestSwitch(0, false); });
  for (const int flag : {1, 2, 0x7F, 0x80, 0xFF}) {
    results.Run("the feature is switched on by " + std::to_string(flag),
                [&] { TestSwitch(static_cast<uint8_t>(flag), true); });
  }
  for (const int32_t strength :
       {0, 100, -1, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()}) {
    results.Run("a strength of " + std::to_string(strength) + " is stored and read",
                [&] { TestStrength(strength); });
  }
  ResetState();
}

}  // namespace dozewell
