#ifndef DOZEWELL_TESTS_RPC_OBSERVED_STATE_H_
#define DOZEWELL_TESTS_RPC_OBSERVED_STATE_H_

#include <cstdint>
#include <string>

namespace dozewell {

// Two settings that show whether a call was carried out.
std::string StoredStrength();
uint32_t StoredFeature();

// Stores both directly, with values that no call of these tests stores: the strength as 55 and the
// feature as 7, which the service never writes and which counts as off.
constexpr uint32_t kFeatureOff = 7;
void StoreUntouched();

// Has the service switch the feature off, and then stores both.
void ResetState();

// Throws std::runtime_error unless both are as StoreUntouched left them.
void ExpectUntouched();

// Throws std::runtime_error unless the service answers a Ping on a new connection.
void ExpectPing();

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_RPC_OBSERVED_STATE_H_
