#include <windows.h>
// After windows.h, which it needs.
#include <winevt.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

// What dozewellctl sees of the event log: files that the test writes, an event in each line, oldest
// first. A log without a file is one that the system does not have. What else a query asks for than
// the log is not looked at.

namespace {

// Stands for the results of a query, or for one event of them.
struct Handle {
  std::vector<std::wstring> events;
  size_t next = 0;
};

std::wstring FromAscii(const std::string& line) { return {line.begin(), line.end()}; }

bool IsReversed(DWORD flags) { return (flags & EvtQueryReverseDirection) != 0; }

}  // namespace

extern "C" {

EVT_HANDLE WINAPI EvtQuery(EVT_HANDLE, const wchar_t* path, const wchar_t*, DWORD flags) {
  const std::wstring log(path);
  std::ifstream file("C:\\lab\\" + std::string(log.begin(), log.end()) + ".xml");
  if (!file) {
    SetLastError(ERROR_CALL_NOT_IMPLEMENTED);
    return nullptr;
  }
  auto results = std::make_unique<Handle>();
  for (std::string line; std::getline(file, line);) results->events.push_back(FromAscii(line));
  if (IsReversed(flags)) std::ranges::reverse(results->events);
  return results.release();
}

BOOL WINAPI EvtNext(EVT_HANDLE handle, DWORD, EVT_HANDLE* events, DWORD, DWORD, DWORD* returned) {
  auto* const results = static_cast<Handle*>(handle);
  if (results->next == results->events.size()) {
    SetLastError(ERROR_NO_MORE_ITEMS);
    return FALSE;
  }
  *events = new Handle{{results->events[results->next++]}, 0};
  *returned = 1;
  return TRUE;
}

BOOL WINAPI EvtRender(EVT_HANDLE, EVT_HANDLE handle, DWORD, DWORD size, void* buffer, DWORD* used,
                      DWORD* properties) {
  const std::wstring& xml = static_cast<Handle*>(handle)->events.front();
  const auto needed = static_cast<DWORD>((xml.size() + 1) * sizeof(wchar_t));
  *used = needed;
  *properties = 0;
  if (size < needed) {
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return FALSE;
  }
  std::memcpy(buffer, xml.c_str(), needed);
  return TRUE;
}

BOOL WINAPI EvtClose(EVT_HANDLE handle) {
  delete static_cast<Handle*>(handle);
  return TRUE;
}

}  // extern "C"
