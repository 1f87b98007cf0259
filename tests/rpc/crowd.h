#ifndef DOZEWELL_TESTS_RPC_CROWD_H_
#define DOZEWELL_TESTS_RPC_CROWD_H_

#include <functional>

namespace dozewell {

// Many clients at once: threads of several processes, which are this program again. All are there
// and wait for a common start; then each calls all procedures, beginning anywhere.

// From the common start to the end of the last client; `meanwhile` is called ten times a second.
// Throws std::runtime_error when a client does not end in time, is answered wrongly or not served.
void RunCrowd(int clients, unsigned int seed, const std::function<void()>& meanwhile);

// The program's part when it was started with the arguments kCrowdMember, a number of clients and a
// seed: its exit code.
constexpr wchar_t kCrowdMember[] = L"-clients";
int BeCrowdMember(int clients, unsigned int seed);

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_RPC_CROWD_H_
