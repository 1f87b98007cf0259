#include "setup/failure_actions.h"

#include <cwchar>
#include <stdexcept>

namespace dozewell::setup {
namespace {

// Takes a number, and what must stand before it, from a text.
uint32_t TakeNumber(const wchar_t*& text, wchar_t before) {
  if (before != L'\0' && *text++ != before) throw std::runtime_error("this is no list of actions");
  wchar_t* end = nullptr;
  const auto number = static_cast<uint32_t>(std::wcstoull(text, &end, 10));
  if (end == text) throw std::runtime_error("this is no list of actions");
  text = end;
  return number;
}

}  // namespace

std::wstring TextOf(const FailureActions& failures) {
  std::wstring text = std::to_wstring(failures.resetSeconds);
  for (const FailureActions::Action& action : failures.actions) {
    text += L',' + std::to_wstring(action.kind) + L'/' + std::to_wstring(action.delayMs);
  }
  return text;
}

FailureActions FailureActionsOf(const std::wstring& text) {
  const wchar_t* rest = text.c_str();
  FailureActions failures = {TakeNumber(rest, L'\0'), {}};
  while (*rest != L'\0') {
    const uint32_t kind = TakeNumber(rest, L',');
    failures.actions.push_back({kind, TakeNumber(rest, L'/')});
  }
  return failures;
}

}  // namespace dozewell::setup
