#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <memory>
#include <random>
#include <string>

#include "rpc/calls.h"
#include "rpc/observed_state.h"
#include "rpc/pipe.h"
#include "rpc/wire_groups.h"

namespace dozewell {
namespace {

constexpr uint32_t kSeed = 20261121;

// The service never answers some of the changed packets.
constexpr uint32_t kAnswerOrSilenceMs = 20;

constexpr size_t kProcedureAt = kHeaderSize + 6;

constexpr int kPacketsBetweenPings = 500;

class Mutator {
 public:
  // A random number below the limit.
  uint32_t Chance(size_t limit) { return static_cast<uint32_t>(random_() % limit); }

  // A valid packet.
  Bytes Base() {
    const Call& call = kCalls.at(Chance(kCalls.size()));
    switch (Chance(20)) {
      case 0:
        return Bind(kControlInterface, kNdr);
      case 1:
        return Bind(kControlInterface, kNdr, PacketType::kAlterContext);
      case 2:
      case 3:
        return Request(call.procedure, call.arguments, static_cast<uint8_t>(Chance(4)));
      default:
        return Request(call.procedure, call.arguments);
    }
  }

  Bytes Mutated() {
    Bytes packet = Base();
    for (uint32_t changes = 1 + Chance(3); changes != 0; --changes) Change(packet);
    KeepProcedureNear(packet);
    return packet;
  }

 private:
  void Change(Bytes& packet) {
    switch (Chance(20)) {
      case 0:
        Shorten(packet);
        break;
      case 1:
      case 2:
        Shorten(packet);
        SetLength(packet);
        break;
      case 3:
        AppendChance(packet, 1 + Chance(64));
        break;
      case 4:
      case 5:
        AppendChance(packet, 1 + Chance(64));
        SetLength(packet);
        break;
      case 6:
        // More than fits into a fragment.
        AppendChance(packet, 5000 + Chance(5000));
        SetLength(packet);
        break;
      case 7:
      case 8:
      case 9:
      case 10:
        packet.at(Place(packet)) ^= static_cast<uint8_t>(1 << Chance(8));
        break;
      default:
        packet.at(Place(packet)) = Value();
    }
  }

  // Cuts the body and keeps the header.
  void Shorten(Bytes& packet) {
    if (packet.size() > kHeaderSize) {
      packet.resize(kHeaderSize + Chance(packet.size() - kHeaderSize));
    }
  }

  // Wine looks up the number of an unknown procedure behind the end of the interface's table; only
  // the first number behind it is sure to be refused.
  void KeepProcedureNear(Bytes& packet) {
    if (packet.size() <= kProcedureAt + 1 || TypeOf(packet) != PacketType::kRequest) return;
    packet[kProcedureAt] %= kProcedures + 1;
    packet[kProcedureAt + 1] = 0;
  }

  // A place for a change, mostly in the body, since few connections survive a wrong header.
  size_t Place(const Bytes& packet) {
    if (packet.size() <= kHeaderSize || Chance(5) == 0) {
      return Chance(std::min(packet.size(), kHeaderSize));
    }
    return kHeaderSize + Chance(packet.size() - kHeaderSize);
  }
  uint8_t Value() {
    constexpr std::array<uint8_t, 6> kExtremes = {0, 1, 0x7F, 0x80, 0xFE, 0xFF};
    return Chance(2) == 0 ? kExtremes.at(Chance(kExtremes.size()))
                          : static_cast<uint8_t>(Chance(256));
  }
  void AppendChance(Bytes& packet, size_t size) {
    for (; size != 0; --size) Append8(packet, Value());
  }
  // Makes the header's length the packet's real one.
  void SetLength(Bytes& packet) {
    if (packet.size() < kHeaderSize) return;
    packet[kFragmentLengthAt] = static_cast<uint8_t>(packet.size());
    packet[kFragmentLengthAt + 1] = static_cast<uint8_t>(packet.size() >> 8);
  }

  std::mt19937 random_{kSeed};
};

// What came back for the packets.
struct Tally {
  int responses = 0;
  int faults = 0;
  int others = 0;  // answers of another kind
  int closed = 0;
  int silent = 0;

  void Count(const Reply& reply) {
    if (reply.outcome == Reply::kClosed) {
      ++closed;
    } else if (reply.outcome == Reply::kNothing) {
      ++silent;
    } else {
      const PacketType type = TypeOf(reply.packet);
      ++(type == PacketType::kResponse ? responses : type == PacketType::kFault ? faults : others);
    }
  }
  std::string Text() const {
    return std::to_string(responses) + " responses, " + std::to_string(faults) + " faults, " +
           std::to_string(others) + " other answers, " + std::to_string(closed) + " closed, " +
           std::to_string(silent) + " silent";
  }
};

// Sends packets one after another, on the same connection while they are answered.
class Sender {
 public:
  Reply Send(const Bytes& packet) {
    // A packet that is still a binding gets a new connection, on which it is the first.
    if (packet.size() > 2 && TypeOf(packet) == PacketType::kBind) return SendBinding(packet);
    if (pipe_ == nullptr) pipe_ = std::make_unique<BoundPipe>();
    Reply reply = pipe_->Send(packet, kAnswerOrSilenceMs);
    if (reply.outcome != Reply::kPacket) pipe_.reset();
    return reply;
  }

 private:
  static Reply SendBinding(const Bytes& packet) {
    Pipe pipe;
    pipe.Write(packet, kAnswerOrSilenceMs);
    Reply reply = pipe.Read(kAnswerOrSilenceMs);
    // The service must have seen the packet before this client leaves, or nothing is tested.
    if (reply.outcome == Reply::kNothing) ExpectPing();
    return reply;
  }

  std::unique_ptr<BoundPipe> pipe_;
};

}  // namespace

void TestMutatedPackets(Results& results, int packets) {
  Mutator mutator;
  Sender sender;
  Tally tally;
  for (int sent = 0; sent < packets;) {
    const int until = std::min(sent + kPacketsBetweenPings, packets);
    results.Run("after " + std::to_string(until) + " mutated packets a Ping is answered", [&] {
      for (; sent < until; ++sent) tally.Count(sender.Send(mutator.Mutated()));
      ExpectPing();
    });
    sent = until;
  }
  results.Run("mutated packets brought answers of all kinds: " + tally.Text(), [&] {
    Expect(tally.responses != 0 && tally.faults != 0 && tally.others != 0 && tally.closed != 0 &&
               tally.silent != 0,
           "one of them never came");
  });
  ResetState();
}

}  // namespace dozewell
