#include <windows.h>
// After windows.h, which it needs.
#include <sddl.h>

#include "base/utf8.h"
#include "ctl/check/sid_text.h"

namespace dozewell::ctl {

std::string SidText(void* sid) {
  wchar_t* text = nullptr;
  if (ConvertSidToStringSidW(sid, &text) == 0) return {};
  std::string copy = NarrowToUtf8(text);
  LocalFree(text);
  return copy;
}

}  // namespace dozewell::ctl
