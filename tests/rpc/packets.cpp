#include "rpc/packets.h"

namespace dozewell {
namespace {

constexpr uint16_t kLargestFragment = 4280;
constexpr uint32_t kCallId = 1;

}  // namespace

const Syntax kControlInterface = {{0xA2, 0x99, 0x41, 0x91, 0x3A, 0x82, 0x9C, 0x4B, 0xBE, 0x28, 0x74,
                                   0xA3, 0x0D, 0x0D, 0xB7, 0x3A},
                                  1,
                                  0};
const Syntax kNdr = {{0x04, 0x5D, 0x88, 0x8A, 0xEB, 0x1C, 0xC9, 0x11, 0x9F, 0xE8, 0x08, 0x00, 0x2B,
                      0x10, 0x48, 0x60},
                     2,
                     0};

void Append8(Bytes& bytes, uint8_t number) { bytes.push_back(number); }

void Append16(Bytes& bytes, uint16_t number) {
  Append8(bytes, static_cast<uint8_t>(number));
  Append8(bytes, static_cast<uint8_t>(number >> 8));
}

void Append32(Bytes& bytes, uint32_t number) {
  Append16(bytes, static_cast<uint16_t>(number));
  Append16(bytes, static_cast<uint16_t>(number >> 16));
}

void Append(Bytes& bytes, const Syntax& syntax) {
  bytes.insert(bytes.end(), syntax.id.begin(), syntax.id.end());
  Append16(bytes, syntax.major);
  Append16(bytes, syntax.minor);
}

Bytes Packet(PacketType type, const Bytes& body, uint8_t fragment) {
  Bytes packet = {5, 0, static_cast<uint8_t>(type), fragment};
  Append32(packet, 0x10);  // little-endian numbers, ASCII, IEEE floats
  Append16(packet, static_cast<uint16_t>(kHeaderSize + body.size()));
  Append16(packet, 0);  // no authentication
  Append32(packet, kCallId);
  packet.insert(packet.end(), body.begin(), body.end());
  return packet;
}

Bytes Bind(const Syntax& syntax, const Syntax& transfer, PacketType type) {
  Bytes body;
  Append16(body, kLargestFragment);
  Append16(body, kLargestFragment);
  Append32(body, 0);  // a new association
  Append32(body, 1);  // one context
  Append16(body, 0);  // its number
  Append16(body, 1);  // one transfer syntax
  Append(body, syntax);
  Append(body, transfer);
  return Packet(type, body);
}

Bytes Request(uint16_t procedure, const Bytes& arguments, uint8_t fragment) {
  Bytes body;
  Append32(body, static_cast<uint32_t>(arguments.size()));
  Append16(body, 0);  // the context's number
  Append16(body, procedure);
  body.insert(body.end(), arguments.begin(), arguments.end());
  return Packet(PacketType::kRequest, body, fragment);
}

size_t FragmentLength(const Bytes& packet) {
  return packet.at(kFragmentLengthAt) | packet.at(kFragmentLengthAt + 1) << 8;
}

PacketType TypeOf(const Bytes& packet) { return static_cast<PacketType>(packet.at(2)); }

Bytes ResultsOf(const Bytes& response) {
  return {response.begin() + kHeaderSize + kArgumentsAt, response.end()};
}

}  // namespace dozewell
