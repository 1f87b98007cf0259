#ifndef DOZEWELL_TESTS_RPC_CROWD_H_
#define DOZEWELL_TESTS_RPC_CROWD_H_

#include <functional>

namespace dozewell {

// Many clients at once: threads of several processes of this program. When all are ready, they
// start together, and each calls all procedures, beginning at a random one.

// Runs a crowd to the end of its last client; `meanwhile` is called ten times a second. Throws
// std::runtime_error when a client does not end in time, gets a wrong answer or none.
void RunCrowd(int clients, unsigned int seed, const std::function<void()>& meanwhile);

// Runs one process of a crowd, started with the arguments kCrowdMember, a number of clients and a
// seed, and returns its exit code.
constexpr wchar_t kCrowdMember[] = L"-clients";
int BeCrowdMember(int clients, unsigned int seed);

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_RPC_CROWD_H_
