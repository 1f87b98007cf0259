#ifndef DOZEWELL_TESTS_RPC_PIPE_H_
#define DOZEWELL_TESTS_RPC_PIPE_H_

#include <cstdint>
#include <string>

#include "base/system_handle.h"
#include "rpc/packets.h"
#include "rpc/results.h"

namespace dozewell {

// The outcome of waiting for a packet: one came, the server closed the connection, or nothing came
// in time.
struct Reply {
  enum Outcome { kPacket, kClosed, kNothing } outcome;
  Bytes packet;
};

std::string Describe(const Reply& reply);

// A connection to the service's pipe that sends bytes as they are.
class Pipe {
 public:
  // Throws std::runtime_error when the service takes no connection in time.
  Pipe();

  // False when the server has closed the connection or does not take all bytes in time.
  bool Write(const Bytes& bytes, uint32_t timeoutMs = kHangMs);
  Reply Read(uint32_t timeoutMs);

 private:
  // How many bytes came; 0 when the outcome is not kPacket.
  size_t ReadSome(uint8_t* bytes, size_t size, uint32_t timeoutMs, Reply::Outcome& outcome);

  SystemHandle event_;
  SystemHandle pipe_;
};

// A connection that is bound to the interface, so that procedures can be called.
class BoundPipe : public Pipe {
 public:
  BoundPipe();

  // Writes a packet and waits for the reply.
  Reply Send(const Bytes& packet, uint32_t timeoutMs = kHangMs);

  // A procedure's results; throws std::runtime_error when anything but a response comes.
  Bytes Call(uint16_t procedure, const Bytes& arguments);
};

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_RPC_PIPE_H_
