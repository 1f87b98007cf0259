#ifndef DOZEWELL_TESTS_RPC_OBSERVED_STATE_H_
#define DOZEWELL_TESTS_RPC_OBSERVED_STATE_H_

#include <cstdint>
#include <string>

namespace dozewell {

// What the settings hold, by which a call that was carried out is known from one that was not.
std::string StoredStrength();
uint32_t StoredFeature();

// Stores both as no call does, without the service's doing: the strength as 55, the feature as 7,
// which the service never writes and which counts as off.
constexpr uint32_t kFeatureOff = 7;
void StoreUntouched();

// The same after the service has switched the feature off.
void ResetState();

// Throws std::runtime_error unless both are as StoreUntouched left them.
void ExpectUntouched();

// Throws std::runtime_error unless the service answers a Ping on a new connection.
void ExpectPing();

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_RPC_OBSERVED_STATE_H_
