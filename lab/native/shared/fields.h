#ifndef DOZEWELL_LAB_SHARED_FIELDS_H_
#define DOZEWELL_LAB_SHARED_FIELDS_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace dozewell::lab {

// A request or answer: one line of UTF-8 whose fields are separated by tabs. Bytes are sent as
// hexadecimal digits.
using Fields = std::vector<std::string>;

Fields SplitFields(const std::string& line);
std::string JoinFields(const Fields& fields);

std::string ToHex(const void* data, size_t size);
std::vector<uint8_t> FromHex(const std::string& digits);

std::wstring ToWide(const std::string& text);
std::string ToNarrow(const std::wstring& text);

// A decimal number; 0 for anything else.
uint32_t ToNumber(const std::string& text);

}  // namespace dozewell::lab

#endif  // DOZEWELL_LAB_SHARED_FIELDS_H_
