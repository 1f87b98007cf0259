#ifndef DOZEWELL_BENCH_RPC_EMPTY_SERVER_H_
#define DOZEWELL_BENCH_RPC_EMPTY_SERVER_H_

namespace dozewell {

// The empty interface's pipe.
extern const wchar_t kEmptyPipe[];

// Serves the empty interface until the process is ended. Returns an exit code when it cannot.
int ServeEmpty();

}  // namespace dozewell

#endif  // DOZEWELL_BENCH_RPC_EMPTY_SERVER_H_
