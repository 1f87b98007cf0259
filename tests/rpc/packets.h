#ifndef DOZEWELL_TESTS_RPC_PACKETS_H_
#define DOZEWELL_TESTS_RPC_PACKETS_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace dozewell {

// The packets of connection-oriented DCE RPC, version 5.0, in little-endian order.

using Bytes = std::vector<uint8_t>;

// Appends a number's bytes.
void Append8(Bytes& bytes, uint8_t number);
void Append16(Bytes& bytes, uint16_t number);
void Append32(Bytes& bytes, uint32_t number);

// Identifies an interface or a transfer syntax.
struct Syntax {
  std::array<uint8_t, 16> id;
  uint16_t major;
  uint16_t minor;
};
// Appends the identifier and the version.
void Append(Bytes& bytes, const Syntax& syntax);
extern const Syntax kControlInterface;
extern const Syntax kNdr;

enum class PacketType : uint8_t {
  kRequest = 0,
  kResponse = 2,
  kFault = 3,
  kBind = 11,
  kBindAck = 12,
  kBindNak = 13,
  kAlterContext = 14,
  kAlterContextResponse = 15,
  kCancel = 18,
  kOrphaned = 19,
};

// A packet's place among the fragments of its call.
constexpr uint8_t kFirstFragment = 0x01;
constexpr uint8_t kLastFragment = 0x02;
constexpr uint8_t kWholeCall = kFirstFragment | kLastFragment;

// Offset of the packet's length in its header, and the size of the header, which the body follows.
constexpr size_t kFragmentLengthAt = 8;
constexpr size_t kHeaderSize = 16;
// Offset of the arguments in the body of a request, and of the results in that of a response.
constexpr size_t kArgumentsAt = 8;

// A packet of this body with the header that fits it.
Bytes Packet(PacketType type, const Bytes& body, uint8_t fragment = kWholeCall);

Bytes Bind(const Syntax& syntax, const Syntax& transfer, PacketType type = PacketType::kBind);
Bytes Request(uint16_t procedure, const Bytes& arguments, uint8_t fragment = kWholeCall);

// The packet's whole length as its header gives it.
size_t FragmentLength(const Bytes& packet);
PacketType TypeOf(const Bytes& packet);
// The results in a response.
Bytes ResultsOf(const Bytes& response);

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_RPC_PACKETS_H_
