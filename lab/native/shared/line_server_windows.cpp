#include <winsock2.h>
// Needs winsock2.h before it.
#include <windows.h>

#include <bit>
#include <string>

#include "shared/line_server.h"

namespace dozewell::lab {
namespace {

AnswerRequest Answer = nullptr;
SOCKET Listener = INVALID_SOCKET;

std::string AnswerLine(const std::string& line) {
  Fields answer = {"ok"};
  try {
    const Fields fields = Answer(SplitFields(line));
    answer.insert(answer.end(), fields.begin(), fields.end());
  } catch (const SystemError& error) {
    answer = {"error", std::to_string(error.code)};
  }
  return JoinFields(answer) + "\n";
}

bool SendAll(SOCKET connection, const std::string& text) {
  size_t sent = 0;
  while (sent < text.size()) {
    const int part = send(connection, text.data() + sent, static_cast<int>(text.size() - sent), 0);
    if (part <= 0) return false;
    sent += static_cast<size_t>(part);
  }
  return true;
}

DWORD WINAPI ServeConnection(void* argument) {
  const auto connection = reinterpret_cast<SOCKET>(argument);
  std::string received;
  char part[4096];
  for (int size = 0; (size = recv(connection, part, sizeof(part), 0)) > 0;) {
    received.append(part, static_cast<size_t>(size));
    for (size_t end = 0; (end = received.find('\n')) != std::string::npos;) {
      const std::string line = received.substr(0, end);
      received.erase(0, end + 1);
      if (!SendAll(connection, AnswerLine(line))) break;
    }
  }
  closesocket(connection);
  return 0;
}

bool StartThread(LPTHREAD_START_ROUTINE procedure, void* argument) {
  const HANDLE thread = CreateThread(nullptr, 0, procedure, argument, 0, nullptr);
  if (thread == nullptr) return false;
  CloseHandle(thread);
  return true;
}

DWORD WINAPI AcceptConnections(void*) {
  for (;;) {
    const SOCKET connection = accept(Listener, nullptr, nullptr);
    if (connection == INVALID_SOCKET) return 1;
    // An answer is one small packet that the test waits for.
    const BOOL yes = TRUE;
    setsockopt(connection, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&yes),
               sizeof(yes));
    if (!StartThread(ServeConnection, std::bit_cast<void*>(connection))) {
      closesocket(connection);
    }
  }
}

}  // namespace

uint32_t StartLineServer(AnswerRequest answer) {
  Answer = answer;
  WSADATA data;
  if (WSAStartup(MAKEWORD(2, 2), &data) != 0) return 0;
  Listener = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  int size = sizeof(address);
  auto* const name = reinterpret_cast<sockaddr*>(&address);
  if (Listener == INVALID_SOCKET || bind(Listener, name, size) != 0 || listen(Listener, 4) != 0 ||
      getsockname(Listener, name, &size) != 0 || !StartThread(AcceptConnections, nullptr)) {
    return 0;
  }
  return ntohs(address.sin_port);
}

}  // namespace dozewell::lab
