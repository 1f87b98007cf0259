#include "event_log/decoded_text.h"

#include <cstddef>

#include "base/utf8.h"

namespace dozewell {
namespace {

enum class ByteOrder { LittleEndian, BigEndian };

// Half a character at the end is left out.
std::string DecodeUtf16(std::string_view bytes, ByteOrder order) {
  const size_t high = order == ByteOrder::LittleEndian ? 1 : 0;
  std::wstring text;
  text.reserve(bytes.size() / 2);
  for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const unsigned int unit = static_cast<unsigned char>(bytes[i + high]) * 256U +
                              static_cast<unsigned char>(bytes[i + 1 - high]);
    text += static_cast<wchar_t>(unit);
  }
  return NarrowToUtf8(text);
}

}  // namespace

std::string DecodeText(std::string_view bytes) {
  struct Encoding {
    std::string_view mark;
    bool isUtf16;
    ByteOrder order;
  };
  constexpr Encoding kEncodings[] = {
      {"\xFF\xFE", true, ByteOrder::LittleEndian},
      {"\xFE\xFF", true, ByteOrder::BigEndian},
      {"\xEF\xBB\xBF", false, ByteOrder::LittleEndian},
  };
  for (const Encoding& encoding : kEncodings) {
    if (!bytes.starts_with(encoding.mark)) continue;
    bytes.remove_prefix(encoding.mark.size());
    return encoding.isUtf16 ? DecodeUtf16(bytes, encoding.order) : std::string(bytes);
  }
  // A tool that writes UTF-16 may leave the mark out.
  constexpr std::string_view kUnmarked("<\0", 2);
  if (bytes.starts_with(kUnmarked)) return DecodeUtf16(bytes, ByteOrder::LittleEndian);
  return std::string(bytes);
}

}  // namespace dozewell
