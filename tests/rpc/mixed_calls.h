#ifndef DOZEWELL_TESTS_RPC_MIXED_CALLS_H_
#define DOZEWELL_TESTS_RPC_MIXED_CALLS_H_

namespace dozewell {

// Binds this program's calls to the service. A call that fails ends the program, with the RPC
// status for its exit code.
void BindToService();

// Procedures are numbered from 0.
constexpr unsigned int kProcedureCount = 15;

// Calls a procedure through its stub, with arguments chosen by chance from those that mean
// something. False when it answers what it cannot on any machine, whatever others call meanwhile.
bool CallByChance(unsigned int procedure, unsigned int chance);

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_RPC_MIXED_CALLS_H_
