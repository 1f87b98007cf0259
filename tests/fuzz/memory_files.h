#ifndef DOZEWELL_TESTS_FUZZ_MEMORY_FILES_H_
#define DOZEWELL_TESTS_FUZZ_MEMORY_FILES_H_

#include <map>
#include <string>
#include <vector>

namespace dozewell::fuzz {

// The files of the fuzz targets by path, in place of a disk. A file that is opened for writing must
// be here beforehand, with room for all that is written.
extern std::map<std::wstring, std::vector<unsigned char>> files;

}  // namespace dozewell::fuzz

#endif  // DOZEWELL_TESTS_FUZZ_MEMORY_FILES_H_
