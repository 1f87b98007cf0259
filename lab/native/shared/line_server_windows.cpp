#include <winsock2.h>
// Needs winsock2.h before it.
#include <windows.h>

#include <bit>
#include <optional>
#include <string>

#include "shared/line_server.h"

namespace dozewell::lab {
namespace {

// More than any request of the test takes.
constexpr size_t kLongestLine = 16 << 20;

AnswerRequest Answer = nullptr;
std::string Token;
SOCKET Listener = INVALID_SOCKET;

// The lines that a connection sends.
class LineReader {
 public:
  explicit LineReader(SOCKET connection) : connection_(connection) {}

  // The next line without its end; nothing when the connection ends or the line is longer.
  std::optional<std::string> Next(size_t longest) {
    size_t end = 0;
    while ((end = received_.find('\n')) == std::string::npos) {
      char part[4096];
      const int size = received_.size() > longest ? 0 : recv(connection_, part, sizeof(part), 0);
      if (size <= 0) return std::nullopt;
      received_.append(part, static_cast<size_t>(size));
    }
    const std::string line = received_.substr(0, end);
    received_.erase(0, end + 1);
    return line;
  }

 private:
  SOCKET connection_;
  std::string received_;
};

std::string ReadToken() {
  const HANDLE file =
      CreateFileW(kTokenFile, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) return "";
  char token[256];
  DWORD size = 0;
  ReadFile(file, token, sizeof(token), &size, nullptr);
  CloseHandle(file);
  return {token, size};
}

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

// Until the connection ends, or sends a line that the test would not send.
void AnswerLines(SOCKET connection) {
  LineReader lines(connection);
  if (lines.Next(Token.size()) != Token) return;
  try {
    while (const auto line = lines.Next(kLongestLine)) {
      if (!SendAll(connection, AnswerLine(*line))) return;
    }
  } catch (const WrongRequest&) {
  }
}

DWORD WINAPI ServeConnection(void* argument) {
  const auto connection = reinterpret_cast<SOCKET>(argument);
  AnswerLines(connection);
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
  Token = ReadToken();
  if (Token.empty()) return 0;
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
