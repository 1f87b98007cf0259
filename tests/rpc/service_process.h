#ifndef DOZEWELL_TESTS_RPC_SERVICE_PROCESS_H_
#define DOZEWELL_TESTS_RPC_SERVICE_PROCESS_H_

#include <cstddef>
#include <cstdint>
#include <string>

#include "base/system_handle.h"

namespace dozewell {

// Restricts this program, and those that it starts from now on, to one processor, where a client
// and a server that take turns are quickest. Throws std::runtime_error when the system refuses.
void StayOnOneProcessor();

// What a process holds. The bytes are its committed private memory.
struct Holdings {
  size_t handles;
  size_t threads;
  size_t privateBytes;
};

// The service in the console, with the settings that a predictor needs and the feature off. The
// settings and data of an installed service are lost.
class ServiceProcess {
 public:
  // Returns once the service listens; throws std::runtime_error when it does not in time.
  explicit ServiceProcess(const std::wstring& program);
  // Ends the service at once if it still runs.
  ~ServiceProcess();
  ServiceProcess(const ServiceProcess&) = delete;
  ServiceProcess& operator=(const ServiceProcess&) = delete;

  bool Runs() const;
  // Both throw std::runtime_error when the system gives no answer.
  Holdings Held() const;
  size_t Handles() const;
  // Stops the service as Ctrl+C does. False when it did not end in time with exit code 0.
  bool Stop();

 private:
  void AwaitListening();

  SystemHandle output_;
  SystemHandle process_;
  uint32_t id_ = 0;
};

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_RPC_SERVICE_PROCESS_H_
