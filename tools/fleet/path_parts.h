#ifndef DOZEWELL_FLEET_PATH_PARTS_H_
#define DOZEWELL_FLEET_PATH_PARTS_H_

#include <string_view>
#include <vector>

namespace dozewell::fleet {

// The names of the folders in a path and of its file, in their order.
std::vector<std::string_view> PathParts(std::string_view path);

// The name of a file without what follows its last dot.
std::string_view WithoutExtension(std::string_view name);

}  // namespace dozewell::fleet

#endif  // DOZEWELL_FLEET_PATH_PARTS_H_
