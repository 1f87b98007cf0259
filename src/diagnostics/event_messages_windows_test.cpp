#include <doctest/doctest.h>
#include <windows.h>

#include <memory>
#include <string>
#include <type_traits>

#include "service/service_manager.h"

namespace dozewell {
namespace {

struct LibraryFreer {
  void operator()(HMODULE library) const { FreeLibrary(library); }
};

// The service's program, which stands beside this one, opened as viewers of the event log open it.
using Library = std::unique_ptr<std::remove_pointer_t<HMODULE>, LibraryFreer>;
Library LoadService() {
  const std::wstring here = ModulePath();
  const std::wstring program = here.substr(0, here.rfind(L'\\') + 1) + L"DozewellService.exe";
  return Library(LoadLibraryExW(program.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE));
}

std::wstring EventText(HMODULE program, DWORD identifier, const wchar_t* string) {
  wchar_t text[200] = {};
  const DWORD_PTR strings[] = {reinterpret_cast<DWORD_PTR>(string)};
  FormatMessageW(FORMAT_MESSAGE_FROM_HMODULE | FORMAT_MESSAGE_ARGUMENT_ARRAY, program, identifier,
                 0, text, 200, reinterpret_cast<va_list*>(const_cast<DWORD_PTR*>(strings)));
  return text;
}

}  // namespace

TEST_CASE("the event log's viewers find the service's events as their plain text") {
  const Library service = LoadService();
  REQUIRE(service != nullptr);
  CHECK(EventText(service.get(), 0, L"GetPreviousSleepStatus 5 %1 %d") ==
        L"GetPreviousSleepStatus 5 %1 %d\r\n");
  // No other identifier is used.
  CHECK(EventText(service.get(), 1, L"x").empty());
}

}  // namespace dozewell
