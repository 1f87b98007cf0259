#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "shared/fields.h"
#include "stand_ins/service_record.h"

namespace dozewell::lab {

MachineState* Machine = nullptr;

namespace {

std::string Escaped(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '\n':
        escaped += "\\n";
        break;
      case '\t':
        escaped += "\\t";
        break;
      case '\\':
        escaped += "\\\\";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

}  // namespace

void Record(const char* kind, const std::string& text) {
  const std::string line = std::string(kind) + '\t' + Escaped(text) + '\n';
  const size_t start = Machine->recordSize.fetch_add(static_cast<uint32_t>(line.size()));
  if (start + line.size() > kRecordCapacity) return;
  std::memcpy(Machine->record + start, line.data(), line.size());
}

void Record(const char* kind, const wchar_t* text) {
  Record(kind, ToNarrow(text == nullptr ? L"(null)" : text));
}

std::string Format(const char* format, ...) {
  char text[1024];
  va_list arguments = {};
  va_start(arguments, format);
  std::vsnprintf(text, sizeof(text), format, arguments);
  va_end(arguments);
  return text;
}

}  // namespace dozewell::lab
