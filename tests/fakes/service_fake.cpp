#include "fakes/service_fake.h"

#include "base/utf8.h"
#include "fakes/journal.h"
#include "rpc/rpc_runtime.h"
#include "service/service_host.h"
#include "service/service_manager.h"

namespace dozewell {
namespace fakes {

Service service;

namespace {

constexpr uint32_t kServiceDoesNotExist = 1060;
constexpr uint32_t kServiceExists = 1073;

constexpr uint32_t kInvalidHandle = 6;

uint32_t lastError = 0;

void NoteServiceCall(const std::string& call) {
  service.calls.push_back(call);
  journal.push_back("service: " + call);
}

bool ServiceCallFails(const std::string& call) {
  NoteServiceCall(call);
  if (!service.failer.Fails()) return false;
  lastError = service.error;
  return true;
}

uint32_t ErrorOf(const std::string& call) { return ServiceCallFails(call) ? service.error : 0; }

ServiceHandle HandleOf(const std::string& call) {
  return ServiceHandle(ServiceCallFails(call) ? nullptr : &service);
}

}  // namespace
}  // namespace fakes

using fakes::service;

uint32_t RunServiceDispatcher() {
  const uint32_t error = fakes::ErrorOf("dispatch");
  if (error == 0 && service.whileServing) service.whileServing();
  return error;
}

void InstallConsoleHandler() { fakes::ServiceCallFails("install console handler"); }

uint32_t RegisterControlHandler() {
  const uint32_t error = fakes::ErrorOf("register handler");
  service.registered = error == 0;
  return error;
}

uint32_t SendServiceStatus(const ServiceStatusRecord& status) {
  if (service.whileSendingStatus) service.whileSendingStatus();
  const uint32_t error = fakes::ErrorOf("status " + std::to_string(status.state) + " " +
                                        std::to_string(status.waitHintMs));
  return error == 0 && !service.registered ? fakes::kInvalidHandle : error;
}

void* RegisterIdleNotification() {
  const bool fails = fakes::ServiceCallFails("register notification");
  return fails || !service.registered ? nullptr : &service;
}

void UnregisterIdleNotification(void* notification) {
  fakes::ServiceCallFails(notification == &service ? "unregister notification"
                                                   : "unregister no notification");
}

uint32_t UseServerEndpoint() { return fakes::ErrorOf("use endpoint"); }

uint32_t RegisterServerInterface() { return fakes::ErrorOf("register interface"); }

uint32_t RegisterServerAuthentication() { return fakes::ErrorOf("register authentication"); }

uint32_t ListenForCalls() {
  const uint32_t error = fakes::ErrorOf("listen");
  service.listening = error == 0;
  return error;
}

uint32_t WaitServerListen() {
  const uint32_t error = fakes::ErrorOf("wait");
  if (error == 0 && service.whileListening) service.whileListening();
  return error;
}

uint32_t StopServerListening() {
  const uint32_t error = fakes::ErrorOf("stop listening");
  if (error == 0) service.listening = false;
  return error;
}

void ServiceHandleCloser::operator()(void*) const { fakes::NoteServiceCall("close"); }

ServiceHandle OpenManagerToCreate() { return fakes::HandleOf("open manager to create"); }

ServiceHandle OpenManager() { return fakes::HandleOf("open manager"); }

ServiceHandle CreateOwnService(void*, const wchar_t* name, const wchar_t* imagePath) {
  ServiceHandle created =
      fakes::HandleOf("create " + NarrowToUtf8(name) + " " + NarrowToUtf8(imagePath));
  if (created != nullptr && service.exists) {
    static_cast<void>(created.release());
    fakes::lastError = fakes::kServiceExists;
  }
  service.exists = service.exists || created != nullptr;
  return created;
}

ServiceHandle OpenExistingService(void*, const wchar_t* name) {
  ServiceHandle opened = fakes::HandleOf("open " + NarrowToUtf8(name));
  if (opened != nullptr && !service.exists) {
    static_cast<void>(opened.release());
    fakes::lastError = fakes::kServiceDoesNotExist;
  }
  return opened;
}

void SetServiceDescription(void*, const wchar_t* description) {
  fakes::ServiceCallFails("describe " + NarrowToUtf8(description));
}

void SetDelayedAutoStart(void*) { fakes::ServiceCallFails("delay start"); }

bool StartExistingService(void*) { return !fakes::ServiceCallFails("start"); }

bool StopExistingService(void*) { return !fakes::ServiceCallFails("stop"); }

bool DeleteExistingService(void*) {
  if (fakes::ServiceCallFails("delete")) return false;
  service.exists = false;
  return true;
}

std::wstring ModulePath() { return L"C:\\Program Files\\Dozewell\\DozewellService.exe"; }

uint32_t LastSystemError() { return fakes::lastError; }

}  // namespace dozewell
