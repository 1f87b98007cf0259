#include <doctest/doctest.h>
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/file.h"
#include "base/system_handle.h"
#include "common/write_text.h"
#include "support/temp_folder.h"

namespace dozewell {
namespace {

constexpr UINT kCodePageOfOldPcs = 437;
// Characters and lines, no fewer than a window can have.
constexpr COORD kSize = {300, 300};

// A console for tests that were started without one, for the life of the object: that of a program
// that waits for a key which never comes. It has no window.
class WindowlessConsole {
 public:
  WindowlessConsole() {
    wchar_t command[] = L"cmd.exe /c pause";
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION started = {};
    REQUIRE(CreateProcessW(nullptr, command, nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr,
                           nullptr, &startup, &started) != 0);
    CloseHandle(started.hThread);
    process_.reset(started.hProcess);
    // A process may have a console that is none, and keeps it from getting another.
    FreeConsole();
    // The program makes it at its start.
    const ULONGLONG end = GetTickCount64() + kLongestStartMs;
    while (AttachConsole(started.dwProcessId) == 0) {
      REQUIRE(GetTickCount64() < end);
      Sleep(10);
    }
  }
  ~WindowlessConsole() {
    FreeConsole();
    TerminateProcess(process_.get(), 0);
    WaitForSingleObject(process_.get(), INFINITE);
  }
  WindowlessConsole(const WindowlessConsole&) = delete;
  WindowlessConsole& operator=(const WindowlessConsole&) = delete;

 private:
  static constexpr ULONGLONG kLongestStartMs = 60'000;
  SystemHandle process_;
};

// A screen of the console that nobody sees, with a code page that has other characters where UTF-8
// has its bytes.
class ScreenOfOldPcs {
 public:
  ScreenOfOldPcs() {
    if (GetConsoleCP() == 0) console_.emplace();
    codePage_ = GetConsoleOutputCP();
    REQUIRE(SetConsoleOutputCP(kCodePageOfOldPcs) != 0);
    screen_ = CreateConsoleScreenBuffer(GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                        CONSOLE_TEXTMODE_BUFFER, nullptr);
    REQUIRE(screen_ != INVALID_HANDLE_VALUE);
    REQUIRE(SetConsoleScreenBufferSize(screen_, kSize) != 0);
    stream_.reset(_fdopen(_open_osfhandle(reinterpret_cast<intptr_t>(screen_), _O_BINARY), "wb"));
    REQUIRE(stream_ != nullptr);
  }
  ~ScreenOfOldPcs() {
    stream_.reset();
    SetConsoleOutputCP(codePage_);
  }
  ScreenOfOldPcs(const ScreenOfOldPcs&) = delete;
  ScreenOfOldPcs& operator=(const ScreenOfOldPcs&) = delete;

  std::FILE* Stream() const { return stream_.get(); }

  // The first characters that it shows.
  std::wstring Shown(size_t count) const {
    std::wstring text(count, L'\0');
    DWORD read = 0;
    CHECK(ReadConsoleOutputCharacterW(screen_, text.data(), static_cast<DWORD>(count), {0, 0},
                                      &read) != 0);
    text.resize(read);
    return text;
  }

 private:
  std::optional<WindowlessConsole> console_;
  UINT codePage_ = 0;
  HANDLE screen_ = INVALID_HANDLE_VALUE;
  File stream_;
};

TEST_CASE("WriteText: a console shows the characters, and keeps its code page") {
  const ScreenOfOldPcs screen;
  CHECK(WriteText(screen.Stream(), "r\xC3\xA9sum\xC3\xA9 \xE2\x82\xAC"));
  CHECK(screen.Shown(8) == L"r\u00E9sum\u00E9 \u20AC");
  CHECK(GetConsoleOutputCP() == kCodePageOfOldPcs);
}

TEST_CASE("WriteText: a console shows what was printed before, first") {
  const ScreenOfOldPcs screen;
  std::fputs("one ", screen.Stream());
  CHECK(WriteText(screen.Stream(), "two"));
  CHECK(screen.Shown(7) == L"one two");
}

TEST_CASE("WriteText: a console gets all of a long text") {
  const ScreenOfOldPcs screen;
  const std::string text(20'000, 'x');
  CHECK(WriteText(screen.Stream(), text));
  CHECK(screen.Shown(text.size() + 1) == std::wstring(text.size(), L'x') + L' ');
}

TEST_CASE("WriteText: a file gets the bytes") {
  const TempFolder folder;
  const std::wstring path = folder.File(L"output.txt");
  CHECK(WriteText(OpenFile(path, "wb").get(), "\xC3\xA9\n\xFF"));
  CHECK(ReadContent(path).bytes == std::vector<unsigned char>{0xC3, 0xA9, 0x0A, 0xFF});
}

}  // namespace
}  // namespace dozewell
