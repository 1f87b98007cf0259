#ifndef DOZEWELL_TESTS_RPC_MIXED_CALLS_H_
#define DOZEWELL_TESTS_RPC_MIXED_CALLS_H_

namespace dozewell {

// Binds this program's calls to the service. A call that fails ends the program, with the RPC
// status for its exit code.
void BindToService();

// Procedures are numbered from 0.
constexpr unsigned int kProcedureCount = 15;

// Calls a procedure through its stub with meaningful arguments, chosen by `chance`. False for an
// answer that is wrong on any machine, whatever other clients call meanwhile.
bool CallByChance(unsigned int procedure, unsigned int chance);

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_RPC_MIXED_CALLS_H_
