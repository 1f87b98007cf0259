#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "rpc/calls.h"
#include "rpc/observed_state.h"
#include "rpc/pipe.h"
#include "rpc/wire_groups.h"

namespace dozewell {
namespace {

// Long enough for the service to handle a packet that it does not answer.
constexpr uint32_t kSilenceMs = 100;

constexpr int kHalfOpen = 200;

// A call whose effect the settings would show.
Bytes SetStrength(uint8_t fragment = kWholeCall) {
  return Request(kSetStrength, LongBytes(99), fragment);
}

void ExpectNotServed(const Reply& reply) {
  Expect(reply.outcome != Reply::kPacket || TypeOf(reply.packet) != PacketType::kResponse,
         Describe(reply));
}

// Sends packets after a binding, and checks that the last gets no response and none has an effect.
void TestNotServed(const std::vector<Bytes>& packets) {
  StoreUntouched();
  BoundPipe pipe;
  bool open = true;
  for (const Bytes& packet : packets) open = open && pipe.Write(packet);
  if (open) ExpectNotServed(pipe.Read(kSilenceMs));
  ExpectPing();
  ExpectUntouched();
}

// Each client leaves after another one has been served, when the service has certainly seen it.
void TestEveryBeginning(const Bytes& packet, bool bound) {
  StoreUntouched();
  for (size_t size = 1; size < packet.size(); ++size) {
    const auto pipe = bound ? std::make_unique<BoundPipe>() : std::make_unique<Pipe>();
    Expect(pipe->Write({packet.begin(), packet.begin() + static_cast<ptrdiff_t>(size)}),
           "the service does not take it");
    ExpectPing();
  }
  ExpectUntouched();
}

// Many clients have sent the beginning of a packet, and another one is served all the same.
void TestHalfOpen(const Bytes& beginning, bool bound) {
  StoreUntouched();
  std::vector<std::unique_ptr<Pipe>> pipes;
  for (int i = 0; i < kHalfOpen; ++i) {
    pipes.push_back(bound ? std::make_unique<BoundPipe>() : std::make_unique<Pipe>());
    if (!beginning.empty()) pipes.back()->Write(beginning);
  }
  ExpectPing();
  ExpectUntouched();
}

void TestRefusedBinding(const Bytes& binding) {
  StoreUntouched();
  Pipe pipe;
  if (pipe.Write(binding)) pipe.Read(kSilenceMs);
  if (pipe.Write(SetStrength())) ExpectNotServed(pipe.Read(kSilenceMs));
  ExpectPing();
  ExpectUntouched();
}

Bytes Changed(Bytes packet, size_t at, uint8_t value) {
  packet.at(at) = value;
  return packet;
}

Syntax Version(Syntax syntax, uint16_t major, uint16_t minor) {
  syntax.major = major;
  syntax.minor = minor;
  return syntax;
}

Syntax OtherId(Syntax syntax) {
  syntax.id.back() ^= 1;
  return syntax;
}

// A header with one or two bytes changed.
struct ChangedHeader {
  const char* name;
  size_t at;
  uint8_t low;
  uint8_t high;
};

Bytes Changed(const ChangedHeader& row) {
  return Changed(Changed(SetStrength(), row.at, row.low), row.at + 1, row.high);
}

// The runtime may serve such a packet or not.
void TestHarmless(const Bytes& packet) {
  BoundPipe().Send(packet, kSilenceMs);
  ExpectPing();
}

struct UnfinishedCall {
  const char* name;
  std::vector<Bytes> packets;
};

struct NamedBinding {
  const char* name;
  Bytes binding;
};

// A binding whose counts are too large, or 0.
Bytes BindingWithCounts(uint8_t contexts, uint8_t transfers) {
  constexpr size_t kContextsAt = kHeaderSize + 8;
  constexpr size_t kTransfersAt = kHeaderSize + 14;
  return Changed(Changed(Bind(kControlInterface, kNdr), kContextsAt, contexts), kTransfersAt,
                 transfers);
}

}  // namespace

void TestOddPackets(Results& results) {
  const ChangedHeader rows[] = {
      {"big-endian numbers", 4, 0, 0},
      {"a context that was not bound", 20, 7, 0},
      {"a part of the packet's version", 1, 9, 0},
      {"the mark of an object that is not there", 3, 0x80 | kWholeCall, 0x10},
  };
  for (const ChangedHeader& row : rows) {
    results.Run("a request with " + std::string(row.name) + " does no harm",
                [&] { TestHarmless(Changed(row)); });
  }
}

void TestRefusedPackets(Results& results) {
  const Bytes binding = Bind(kControlInterface, kNdr);

  results.Run("a connection may end anywhere in a binding",
              [&] { TestEveryBeginning(binding, false); });
  results.Run("a connection may end anywhere in a request",
              [&] { TestEveryBeginning(SetStrength(), true); });
  results.Run("many clients that say nothing keep no other waiting",
              [&] { TestHalfOpen({}, false); });
  results.Run("many clients in the middle of a binding keep no other waiting", [&] {
    TestHalfOpen({binding.begin(), binding.begin() + 20}, false);
  });
  results.Run("many clients in the middle of a request keep no other waiting", [&] {
    const Bytes request = SetStrength();
    TestHalfOpen({request.begin(), request.begin() + 20}, true);
  });
  results.Run("many clients in the middle of a call keep no other waiting",
              [&] { TestHalfOpen(SetStrength(kFirstFragment), true); });

  const UnfinishedCall unfinished[] = {
      {"a first fragment alone", {SetStrength(kFirstFragment)}},
      {"first fragments again and again",
       {SetStrength(kFirstFragment), SetStrength(kFirstFragment), SetStrength(kFirstFragment)}},
      {"a middle fragment alone", {SetStrength(0)}},
      {"a last fragment alone", {SetStrength(kLastFragment)}},
      {"a cancelled call",
       {SetStrength(kFirstFragment), Packet(PacketType::kCancel, {}, kWholeCall)}},
      {"an orphaned call",
       {SetStrength(kFirstFragment), Packet(PacketType::kOrphaned, {}, kWholeCall)}},
  };
  for (const UnfinishedCall& row : unfinished) {
    results.Run(std::string(row.name) + " does nothing", [&] { TestNotServed(row.packets); });
  }

  const ChangedHeader changed[] = {
      {"version 4.0", 0, 4, 0},
      {"version 6.0", 0, 6, 0},
      {"unknown type 1", 2, 1, kWholeCall},
      {"unknown type 20", 2, 20, kWholeCall},
      {"unknown type 255", 2, 255, kWholeCall},
      {"a response's type", 2, 2, kWholeCall},
      {"a fault's type", 2, 3, kWholeCall},
      {"an acknowledgment's type", 2, 12, kWholeCall},
      {"length 0", kFragmentLengthAt, 0, 0},
      {"a length within the header", kFragmentLengthAt, 15, 0},
      {"the header's length", kFragmentLengthAt, 16, 0},
      {"a length within the body's head", kFragmentLengthAt, 23, 0},
      {"a length short of the arguments", kFragmentLengthAt, 27, 0},
      {"a length of more than there is", kFragmentLengthAt, 29, 0},
      {"the largest length", kFragmentLengthAt, 0xFF, 0xFF},
      {"an authentication that is not there", 10, 16, 0},
      {"an authentication beyond the packet", 10, 0xFF, 0xFF},
  };
  for (const ChangedHeader& row : changed) {
    results.Run("a request with " + std::string(row.name) + " is not served",
                [&] { TestNotServed({Changed(row)}); });
  }

  const NamedBinding refused[] = {
      {"another interface", Bind(OtherId(kControlInterface), kNdr)},
      {"version 2.0", Bind(Version(kControlInterface, 2, 0), kNdr)},
      {"version 1.1", Bind(Version(kControlInterface, 1, 1), kNdr)},
      {"version 0.0", Bind(Version(kControlInterface, 0, 0), kNdr)},
      {"another transfer syntax", Bind(kControlInterface, OtherId(kNdr))},
      {"no interface", BindingWithCounts(0, 1)},
      {"no transfer syntax", BindingWithCounts(1, 0)},
  };
  for (const NamedBinding& row : refused) {
    results.Run("a binding to " + std::string(row.name) + " is not served",
                [&] { TestRefusedBinding(row.binding); });
  }
  results.Run("without a binding nothing is served", [&] { TestRefusedBinding(SetStrength()); });
}

}  // namespace dozewell
