#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>

#include "rpc/calls.h"
#include "rpc/observed_state.h"
#include "rpc/pipe.h"
#include "rpc/wire_groups.h"

namespace dozewell {
namespace {

// Enumeration values: the largest that the runtime passes on, which mean nothing to the service,
// and some that are too large for an enumeration.
constexpr uint16_t kMeaningless[] = {0x7FFE, 0x7FFF};
constexpr uint16_t kTooLarge[] = {0x8000, 0x8001, 0xFFFE, 0xFFFF};

bool IsPacket(const Reply& reply, PacketType type) {
  return reply.outcome == Reply::kPacket && TypeOf(reply.packet) == type;
}

// Whether the answer is 0 and the output empty.
bool IsRefused(const Reply& reply, const Call& call) {
  return IsPacket(reply, PacketType::kResponse) &&
         ResultsOf(reply.packet) == Bytes(call.results.size());
}

Reply SendWithEnum(const Call& call, size_t at, uint16_t number) {
  Bytes arguments = call.arguments;
  arguments.at(at) = static_cast<uint8_t>(number);
  arguments.at(at + 1) = static_cast<uint8_t>(number >> 8);
  return BoundPipe().Send(Request(call.procedure, arguments));
}

void TestMeaninglessEnums(const Call& call) {
  for (const size_t at : call.enumsAt) {
    for (const uint16_t number : kMeaningless) {
      const Reply reply = SendWithEnum(call, at, number);
      Expect(IsRefused(reply, call),
             std::to_string(number) + " at " + std::to_string(at) + " brings " + Describe(reply));
    }
  }
}

// A runtime may refuse too large a number before the service sees it.
void TestEnumsTooLarge(const Call& call) {
  StoreUntouched();
  for (const size_t at : call.enumsAt) {
    for (const uint16_t number : kTooLarge) {
      const Reply reply = SendWithEnum(call, at, number);
      Expect(IsRefused(reply, call) || IsPacket(reply, PacketType::kFault),
             std::to_string(number) + " at " + std::to_string(at) + " brings " + Describe(reply));
    }
  }
  ExpectUntouched();
}

void TestShort(const Call& call) {
  StoreUntouched();
  for (size_t size = 0; size < call.arguments.size(); ++size) {
    const Bytes part(call.arguments.begin(), call.arguments.begin() + static_cast<ptrdiff_t>(size));
    const Reply reply = BoundPipe().Send(Request(call.procedure, part));
    Expect(IsPacket(reply, PacketType::kFault),
           std::to_string(size) + " bytes bring " + Describe(reply));
  }
  ExpectUntouched();
}

void TestLong(const Call& call) {
  ResetState();
  for (const size_t more : {1, 3, 4, 1000, 4000}) {
    const Bytes arguments = Joined(call.arguments, Bytes(more, 0xFF));
    const Reply reply = BoundPipe().Send(Request(call.procedure, arguments));
    Expect(IsPacket(reply, PacketType::kResponse) && ResultsOf(reply.packet) == call.results,
           std::to_string(more) + " more bytes bring " + Describe(reply));
  }
}

void TestUnknownProcedure() {
  constexpr Bytes::value_type kOutOfRange[] = {0x02, 0x00, 0x01, 0x1C};
  StoreUntouched();
  for (const size_t size : {0, 4, 64}) {
    const Reply reply = BoundPipe().Send(Request(kProcedures, Bytes(size)));
    Expect(IsPacket(reply, PacketType::kFault) &&
               std::equal(std::begin(kOutOfRange), std::end(kOutOfRange),
                          ResultsOf(reply.packet).begin()),
           Describe(reply));
  }
  ExpectUntouched();
}

void ForEachCall(Results& results, const char* behaviour, bool (*concerned)(const Call& call),
                 void (*test)(const Call& call)) {
  for (const Call& call : kCalls) {
    if (concerned(call)) {
      results.Run(std::string(call.name) + " " + behaviour, [&] { test(call); });
    }
  }
  results.Run("after them a Ping is answered", ExpectPing);
}

bool HasEnums(const Call& call) { return !call.enumsAt.empty(); }
bool HasArguments(const Call& call) { return !call.arguments.empty(); }
bool IsAny(const Call&) { return true; }

}  // namespace

void TestOddCalls(Results& results) {
  ForEachCall(results, "refuses numbers that mean nothing", HasEnums, TestMeaninglessEnums);
  ForEachCall(results, "does not mind bytes behind its arguments", IsAny, TestLong);
}

void TestRefusedCalls(Results& results) {
  ForEachCall(results, "refuses numbers that no enumeration holds", HasEnums, TestEnumsTooLarge);
  ForEachCall(results, "is not called with arguments too short", HasArguments, TestShort);
  results.Run("there is no sixteenth procedure", TestUnknownProcedure);
  results.Run("after it a Ping is answered", ExpectPing);
}

}  // namespace dozewell
