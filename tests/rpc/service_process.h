#ifndef DOZEWELL_TESTS_RPC_SERVICE_PROCESS_H_
#define DOZEWELL_TESTS_RPC_SERVICE_PROCESS_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace dozewell {

// Has this program, and what it starts from now on, run on one processor: a client and a server
// that take turns are quickest there. Throws std::runtime_error when the system does not let it.
void StayOnOneProcessor();

// What a process holds of its system. Memory is what it has committed for itself alone.
struct Holdings {
  size_t handles;
  size_t threads;
  size_t privateBytes;
};

// The service, run in the console on a machine of its own: settings and data of an installed one
// are lost. Whatever a predictor needs is provisioned, and the feature is off.
class ServiceProcess {
 public:
  // Returns once the service listens; throws std::runtime_error when it does not in time.
  explicit ServiceProcess(const std::wstring& program);
  // Ends it at once if it runs still.
  ~ServiceProcess();
  ServiceProcess(const ServiceProcess&) = delete;
  ServiceProcess& operator=(const ServiceProcess&) = delete;

  bool Runs() const;
  // Both throw std::runtime_error when the system does not tell.
  Holdings Held() const;
  size_t Handles() const;
  // Stops the service as Ctrl+C does. False when it did not end in time with exit code 0.
  bool Stop();

 private:
  struct Closer {
    void operator()(void* handle) const;
  };
  using Handle = std::unique_ptr<void, Closer>;

  void AwaitListening();

  Handle output_;
  Handle process_;
  uint32_t id_ = 0;
};

}  // namespace dozewell

#endif  // DOZEWELL_TESTS_RPC_SERVICE_PROCESS_H_
