#ifndef DOZEWELL_TESTS_RPC_WIRE_GROUPS_H_
#define DOZEWELL_TESTS_RPC_WIRE_GROUPS_H_

#include "rpc/results.h"

namespace dozewell {

// Groups of tests that send packets to the listening service.

// What clients send, and how it is answered on a machine without driver and power schemes.
void TestWellFormedCalls(Results& results);

// What no client's stub sends but a runtime may serve: numbers that mean nothing, bytes behind the
// arguments, odd headers. For the same machine.
void TestOddCalls(Results& results);
void TestOddPackets(Results& results);

// What must not be carried out: arguments too short, numbers that no enumeration holds, procedures
// that are not there; packets that are wrong themselves, and connections that end in the middle of
// one. For any machine.
void TestRefusedCalls(Results& results);
void TestRefusedPackets(Results& results);

// Right packets changed by chance.
void TestMutatedPackets(Results& results, int packets);

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_RPC_WIRE_GROUPS_H_
