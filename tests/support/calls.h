#ifndef DOZEWELL_TESTS_SUPPORT_CALLS_H_
#define DOZEWELL_TESTS_SUPPORT_CALLS_H_

#include <initializer_list>
#include <ostream>
#include <string>
#include <vector>

namespace dozewell {

// Calls in their order, which a failing test shows line by line.
struct Calls : std::vector<std::string> {
  using std::vector<std::string>::vector;
};

inline std::ostream& operator<<(std::ostream& stream, const Calls& calls) {
  for (const std::string& call : calls) stream << "\n  " << call;
  return stream;
}

inline Calls Joined(std::initializer_list<Calls> parts) {
  Calls all;
  for (const Calls& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_SUPPORT_CALLS_H_
