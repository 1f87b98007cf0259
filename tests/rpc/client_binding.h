#ifndef DOZEWELL_TESTS_RPC_CLIENT_BINDING_H_
#define DOZEWELL_TESTS_RPC_CLIENT_BINDING_H_

namespace dozewell {

// A binding (a handle_t) to the server behind a named pipe of this machine, such as kRpcEndpoint;
// kept to the end of the program. Throws std::runtime_error when there can be none.
void* BindToPipe(const wchar_t* endpoint);

// Has a call that fails end the program: the stubs raise no C++ exceptions. The exit code is the
// RPC status.
void EndOnFailedCall();

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_RPC_CLIENT_BINDING_H_
