#include <windows.h>

#include <stdexcept>

#include "rpc/pipe.h"

namespace dozewell {
namespace {

constexpr wchar_t kPipe[] = L"\\\\.\\pipe\\Brevan_Dozewell_Service";
// A service that has ended is to be noticed sooner than one that hangs.
constexpr DWORD kMissingMs = 120000;

// While all instances of the pipe are in use, connecting fails for a moment and is tried again.
HANDLE Connect() {
  const DWORD start = GetTickCount();
  DWORD patienceMs = kHangMs;
  DWORD error = 0;
  do {
    const HANDLE pipe = CreateFileW(kPipe, GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_OVERLAPPED, nullptr);
    if (pipe != INVALID_HANDLE_VALUE) return pipe;
    error = GetLastError();
    const bool busy = error == ERROR_PIPE_BUSY;
    patienceMs = busy ? kHangMs : kMissingMs;
    if (busy) WaitNamedPipeW(kPipe, kHangMs);
    Sleep(0);
  } while (GetTickCount() - start < patienceMs);
  throw std::runtime_error("the service's pipe cannot be opened: " + std::to_string(error));
}

// How an operation that was begun has ended; one that takes too long is cancelled.
enum class End { kDone, kFailed, kLate };

End Await(HANDLE pipe, OVERLAPPED& operation, bool begun, DWORD timeoutMs, DWORD& transferred) {
  if (!begun && GetLastError() != ERROR_IO_PENDING) return End::kFailed;
  const bool inTime = WaitForSingleObject(operation.hEvent, timeoutMs) == WAIT_OBJECT_0;
  if (!inTime) CancelIo(pipe);
  if (GetOverlappedResult(pipe, &operation, &transferred, TRUE)) return End::kDone;
  return inTime ? End::kFailed : End::kLate;
}

}  // namespace

std::string Describe(const Reply& reply) {
  switch (reply.outcome) {
    case Reply::kPacket:
      return "packet of type " + std::to_string(static_cast<int>(TypeOf(reply.packet))) + " with " +
             std::to_string(reply.packet.size()) + " bytes";
    case Reply::kClosed:
      return "connection closed";
    default:
      return "nothing";
  }
}

Pipe::Pipe() : event_(CreateEventW(nullptr, TRUE, FALSE, nullptr)), pipe_(Connect()) {}

bool Pipe::Write(const Bytes& bytes, uint32_t timeoutMs) {
  OVERLAPPED operation = {};
  operation.hEvent = event_.get();
  DWORD written = 0;
  const bool begun = WriteFile(pipe_.get(), bytes.data(), static_cast<DWORD>(bytes.size()), nullptr,
                               &operation) != 0;
  return Await(pipe_.get(), operation, begun, timeoutMs, written) == End::kDone &&
         written == bytes.size();
}

size_t Pipe::ReadSome(uint8_t* bytes, size_t size, uint32_t timeoutMs, Reply::Outcome& outcome) {
  OVERLAPPED operation = {};
  operation.hEvent = event_.get();
  DWORD read = 0;
  const bool begun =
      ReadFile(pipe_.get(), bytes, static_cast<DWORD>(size), nullptr, &operation) != 0;
  const End end = Await(pipe_.get(), operation, begun, timeoutMs, read);
  outcome = end == End::kLate                ? Reply::kNothing
            : end == End::kDone && read != 0 ? Reply::kPacket
                                             : Reply::kClosed;
  return outcome == Reply::kPacket ? read : 0;
}

Reply Pipe::Read(uint32_t timeoutMs) {
  Reply reply = {Reply::kPacket, {}};
  size_t wanted = kHeaderSize;
  size_t had = 0;
  while (had < wanted && reply.outcome == Reply::kPacket) {
    reply.packet.resize(wanted);
    had += ReadSome(reply.packet.data() + had, wanted - had, timeoutMs, reply.outcome);
    if (had == kHeaderSize) wanted = FragmentLength(reply.packet);
  }
  return reply;
}

BoundPipe::BoundPipe() {
  const Reply reply = Send(Bind(kControlInterface, kNdr));
  if (reply.outcome != Reply::kPacket || TypeOf(reply.packet) != PacketType::kBindAck) {
    throw std::runtime_error("a binding brings " + Describe(reply));
  }
}

Reply BoundPipe::Send(const Bytes& packet, uint32_t timeoutMs) {
  Write(packet, timeoutMs);
  return Read(timeoutMs);
}

Bytes BoundPipe::Call(uint16_t procedure, const Bytes& arguments) {
  const Reply reply = Send(Request(procedure, arguments));
  if (reply.outcome != Reply::kPacket || TypeOf(reply.packet) != PacketType::kResponse) {
    throw std::runtime_error("procedure " + std::to_string(procedure) + " brings " +
                             Describe(reply));
  }
  return ResultsOf(reply.packet);
}

}  // namespace dozewell
