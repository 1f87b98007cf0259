#ifndef DOZEWELL_TESTS_FUZZ_MEMORY_FILES_H_
#define DOZEWELL_TESTS_FUZZ_MEMORY_FILES_H_

#include <map>
#include <string>
#include <vector>

namespace dozewell::fuzz {

// What base's files read and write here, by path. A file opened for writing must fit what it is
// given here beforehand.
extern std::map<std::wstring, std::vector<unsigned char>> files;

}  // namespace dozewell::fuzz

#endif  // DOZEWELL_TESTS_FUZZ_MEMORY_FILES_H_
