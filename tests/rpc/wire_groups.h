#ifndef DOZEWELL_TESTS_RPC_WIRE_GROUPS_H_
#define DOZEWELL_TESTS_RPC_WIRE_GROUPS_H_

#include "rpc/results.h"

namespace dozewell {

// Groups of tests that send packets to the listening service.

// Calls as clients send them. The expected answers are those of a machine without driver and power
// schemes.
void TestWellFormedCalls(Results& results);

// Calls and packets that no client's stub sends but that a runtime may serve: numbers without a
// meaning, bytes behind the arguments, odd headers. For such a machine too.
void TestOddCalls(Results& results);
void TestOddPackets(Results& results);

// Calls and packets that must not be carried out: arguments that are too short, numbers that no
// enumeration holds, procedures that do not exist, malformed packets, and connections that end in
// the middle of one. For any machine.
void TestRefusedCalls(Results& results);
void TestRefusedPackets(Results& results);

// Valid packets with random changes.
void TestMutatedPackets(Results& results, int packets);

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_RPC_WIRE_GROUPS_H_
