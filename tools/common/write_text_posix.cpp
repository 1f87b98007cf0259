#include "common/write_text.h"

namespace dozewell {

bool WriteText(std::FILE* stream, std::string_view text) {
  return std::fwrite(text.data(), 1, text.size(), stream) == text.size() &&
         std::fflush(stream) == 0;
}

}  // namespace dozewell
