#include "ctl/guid_text.h"

#include "common/format_text.h"

namespace dozewell::ctl {

std::string GuidText(const Guid& guid) {
  const auto& [data1, data2, data3, data4] = guid;
  return FormatText("%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X", data1, data2, data3,
                    data4[0], data4[1], data4[2], data4[3], data4[4], data4[5], data4[6], data4[7]);
}

}  // namespace dozewell::ctl
