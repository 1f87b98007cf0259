#include <windows.h>
#include <winevt.h>

#include <algorithm>
#include <memory>

#include "base/system_handle.h"
#include "base/utf8.h"
#include "ctl/event_feed.h"

namespace dozewell::ctl {
namespace {

// A source that is not registered writes to this log.
constexpr wchar_t kLog[] = L"Application";
constexpr wchar_t kSource[] = L"Provider[@Name='Dozewell Service']";
constexpr wchar_t kQuery[] = L"*[System[Provider[@Name='Dozewell Service']]]";

// Those that log how a machine sleeps, wakes, starts and shuts down.
constexpr wchar_t kSleepSources[] =
    L"Provider[@Name='Microsoft-Windows-Kernel-Power' or @Name='Microsoft-Windows-Kernel-General' "
    L"or @Name='Microsoft-Windows-Power-Troubleshooter' or @Name='EventLog']";

struct EventCloser {
  void operator()(void* handle) const { EvtClose(handle); }
};
// Owns an EVT_HANDLE.
using EventHandle = std::unique_ptr<void, EventCloser>;

// Functions of the event log may fail without setting an error where they are not implemented.
void ExpectReason() { SetLastError(ERROR_CALL_NOT_IMPLEMENTED); }

uint32_t Render(EVT_HANDLE event, std::string& xml) {
  DWORD size = 0;
  DWORD properties = 0;
  EvtRender(nullptr, event, EvtRenderEventXml, 0, nullptr, &size, &properties);
  if (GetLastError() != ERROR_INSUFFICIENT_BUFFER) return GetLastError();
  std::wstring text(size / sizeof(wchar_t) + 1, L'\0');
  if (EvtRender(nullptr, event, EvtRenderEventXml, size, text.data(), &size, &properties) == 0) {
    return GetLastError();
  }
  text.resize(text.find(L'\0'));
  xml = NarrowToUtf8(text);
  return 0;
}

// Reads the next event; ERROR_NO_MORE_ITEMS when there is none.
uint32_t Next(EVT_HANDLE results, std::string& xml) {
  EVT_HANDLE handle = nullptr;
  DWORD got = 0;
  if (EvtNext(results, 1, &handle, INFINITE, 0, &got) == 0) return GetLastError();
  const EventHandle event(handle);
  return Render(event.get(), xml);
}

HANDLE interrupted = nullptr;

BOOL WINAPI Interrupt(DWORD) { return SetEvent(interrupted); }

// Makes Ctrl+C set an event instead of ending the program, for as long as this object exists.
class InterruptWatch {
 public:
  explicit InterruptWatch(HANDLE event) {
    interrupted = event;
    SetConsoleCtrlHandler(Interrupt, TRUE);
  }
  ~InterruptWatch() { SetConsoleCtrlHandler(Interrupt, FALSE); }
  InterruptWatch(const InterruptWatch&) = delete;
  InterruptWatch& operator=(const InterruptWatch&) = delete;
};

// Passes all events that are waiting to `take`.
uint32_t Drain(EVT_HANDLE results, const std::function<void(const std::string&)>& take) {
  std::string xml;
  for (;;) {
    const uint32_t error = Next(results, xml);
    if (error == ERROR_NO_MORE_ITEMS) return 0;
    if (error != 0) return error;
    take(xml);
  }
}

uint32_t ReadRecent(const wchar_t* log, const wchar_t* source, uint32_t days,
                    const std::function<void(const std::string& xml)>& take) {
  constexpr uint64_t kMillisecondsPerDay = 86'400'000;
  const std::wstring query = L"*[System[" + std::wstring(source) +
                             L" and TimeCreated[timediff(@SystemTime) <= " +
                             std::to_wstring(days * kMillisecondsPerDay) + L"]]]";
  ExpectReason();
  const EventHandle results(EvtQuery(nullptr, log, query.c_str(), EvtQueryChannelPath));
  return results ? Drain(results.get(), take) : GetLastError();
}

}  // namespace

uint32_t ReadSleepEvents(uint32_t days, const std::function<void(const std::string& xml)>& take) {
  return ReadRecent(L"System", kSleepSources, days, take);
}

uint32_t ReadServiceEvents(uint32_t days, const std::function<void(const std::string& xml)>& take) {
  return ReadRecent(kLog, kSource, days, take);
}

uint32_t ReadSystemLog(const std::function<void(const std::string& xml)>& take) {
  ExpectReason();
  const EventHandle results(EvtQuery(nullptr, L"System", L"*", EvtQueryChannelPath));
  return results ? Drain(results.get(), take) : GetLastError();
}

uint32_t ReadLastEvents(size_t count, std::vector<std::string>& events) {
  events.clear();
  ExpectReason();
  const EventHandle results(
      EvtQuery(nullptr, kLog, kQuery, EvtQueryChannelPath | EvtQueryReverseDirection));
  if (!results) return GetLastError();
  uint32_t error = 0;
  std::string xml;
  while (events.size() < count && (error = Next(results.get(), xml)) == 0) events.push_back(xml);
  std::ranges::reverse(events);
  return error == ERROR_NO_MORE_ITEMS ? 0 : error;
}

uint32_t WatchEvents(const std::function<void(const std::string& xml)>& take) {
  const SystemHandle arrived(CreateEventW(nullptr, /*manual*/ TRUE, FALSE, nullptr));
  const SystemHandle stopped(CreateEventW(nullptr, /*manual*/ TRUE, FALSE, nullptr));
  if (!arrived || !stopped) return GetLastError();
  const InterruptWatch watch(stopped.get());
  ExpectReason();
  const EventHandle subscription(EvtSubscribe(nullptr, arrived.get(), kLog, kQuery, nullptr,
                                              nullptr, nullptr, EvtSubscribeToFutureEvents));
  if (!subscription) return GetLastError();
  const HANDLE either[] = {stopped.get(), arrived.get()};
  for (;;) {
    const DWORD which = WaitForMultipleObjects(2, either, FALSE, INFINITE);
    if (which == WAIT_OBJECT_0) return 0;
    if (which != WAIT_OBJECT_0 + 1) return GetLastError();
    // Reset before reading, so that an event that arrives meanwhile is not missed.
    ResetEvent(arrived.get());
    if (const uint32_t error = Drain(subscription.get(), take)) return error;
  }
}

}  // namespace dozewell::ctl
