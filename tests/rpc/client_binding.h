#ifndef DOZEWELL_TESTS_RPC_CLIENT_BINDING_H_
#define DOZEWELL_TESTS_RPC_CLIENT_BINDING_H_

namespace dozewell {

// A binding (a handle_t) to the server behind a named pipe of this machine, such as kRpcEndpoint;
// kept to the end of the program. Throws std::runtime_error when it cannot be made.
void* BindToPipe(const wchar_t* endpoint);

// From now on a call that fails ends the program, since the stubs raise no C++ exceptions. The exit
// code is the RPC status.
void EndOnFailedCall();

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_RPC_CLIENT_BINDING_H_
