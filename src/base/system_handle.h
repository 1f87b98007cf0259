#ifndef DOZEWELL_BASE_SYSTEM_HANDLE_H_
#define DOZEWELL_BASE_SYSTEM_HANDLE_H_

#include <memory>

namespace dozewell {

// Owns a handle of Windows that CloseHandle closes; null for none.
struct SystemHandleCloser {
  void operator()(void* handle) const;
};
using SystemHandle = std::unique_ptr<void, SystemHandleCloser>;

}  // namespace dozewell

#endif  // DOZEWELL_BASE_SYSTEM_HANDLE_H_
