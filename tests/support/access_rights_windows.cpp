#include "support/access_rights_windows.h"

#include <windows.h>
// After windows.h, which it needs.
#include <aclapi.h>
#include <sddl.h>

#include <memory>
#include <stdexcept>
#include <utility>

#include "base/utf8.h"
#include "support/system_calls_windows.h"

namespace dozewell::support {
namespace {

PSECURITY_DESCRIPTOR DescriptorOf(const std::wstring& text) {
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  if (ConvertStringSecurityDescriptorToSecurityDescriptorW(text.c_str(), SDDL_REVISION_1,
                                                           &descriptor, nullptr) == 0) {
    throw std::runtime_error("this is no text form of a security descriptor");
  }
  return descriptor;
}

std::wstring had;
std::vector<GivenAccess> given;

DWORD Get(HANDLE, SE_OBJECT_TYPE, SECURITY_INFORMATION, PSID* owner, PSID*, PACL* list, PACL*,
          PSECURITY_DESCRIPTOR* descriptor) {
  *descriptor = DescriptorOf(had);
  BOOL present = FALSE;
  BOOL defaulted = FALSE;
  if (owner != nullptr) GetSecurityDescriptorOwner(*descriptor, owner, &defaulted);
  if (list == nullptr) return ERROR_SUCCESS;
  *list = nullptr;
  GetSecurityDescriptorDacl(*descriptor, &present, list, &defaulted);
  return ERROR_SUCCESS;
}

std::string NameOf(HANDLE file) {
  wchar_t path[MAX_PATH] = {};
  GetFinalPathNameByHandleW(file, path, MAX_PATH, 0);
  const std::string whole = NarrowToUtf8(path);
  return whole.substr(whole.rfind('\\') + 1);
}

BOOL Set(HANDLE file, SECURITY_INFORMATION parts, PSECURITY_DESCRIPTOR descriptor) {
  given.push_back({NameOf(file), AccessText(descriptor, parts)});
  return TRUE;
}

struct Stubs {
  ImportStub<"GetSecurityInfo", decltype(GetSecurityInfo)> get{Get};
  ImportStub<"SetKernelObjectSecurity", decltype(SetKernelObjectSecurity)> set{Set};
};
std::unique_ptr<Stubs> stubs;

}  // namespace

std::string AccessText(void* descriptor, uint32_t parts) {
  wchar_t* text = nullptr;
  if (ConvertSecurityDescriptorToStringSecurityDescriptorW(descriptor, SDDL_REVISION_1, parts,
                                                           &text, nullptr) == 0) {
    throw std::runtime_error("a security descriptor has no text form");
  }
  std::string narrow = NarrowToUtf8(text);
  LocalFree(text);
  return narrow;
}

void LetEverybodyWrite(const std::wstring& path) {
  const PSECURITY_DESCRIPTOR descriptor = DescriptorOf(L"D:P(A;OICI;FA;;;WD)");
  const bool isSet = SetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, descriptor) != 0;
  LocalFree(descriptor);
  if (!isSet) throw std::runtime_error("access rights cannot be set");
}

FileAccessStub::FileAccessStub() { stubs = std::make_unique<Stubs>(); }

FileAccessStub::~FileAccessStub() {
  stubs.reset();
  given.clear();
  TakeSystemCalls();
}

void FileAccessStub::Have(const std::wstring& access) { had = access; }

std::vector<GivenAccess> FileAccessStub::TakeGiven() { return std::exchange(given, {}); }

}  // namespace dozewell::support
