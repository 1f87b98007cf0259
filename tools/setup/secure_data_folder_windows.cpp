#include <windows.h>
// After windows.h, which they need.
#include <aclapi.h>
#include <sddl.h>

#include <array>
#include <memory>
#include <string>

#include "base/utf8.h"
#include "common/system_handle.h"
#include "prediction/cyclic_probability_predictor.h"
#include "prediction/history_file.h"
#include "settings/data_folder.h"
#include "setup/system_error.h"
#include "setup/system_steps.h"

namespace dozewell::setup {
namespace {

// Administrators own it. They and the system have full rights, users may read. What is created
// inside inherits these rights, and nothing is inherited from outside.
constexpr wchar_t kSafeAccess[] =
    L"O:BAG:BAD:P(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)(A;OICI;0x1200a9;;;BU)";

enum class Kind { kFolder, kFile };

struct LocalFreer {
  void operator()(void* memory) const { LocalFree(memory); }
};
using LocalMemory = std::unique_ptr<void, LocalFreer>;

[[noreturn]] void Fail(const std::wstring& path, uint32_t error) {
  throw SystemError(NarrowToUtf8(path) + ": cannot be made safe", error);
}

class SafeAccess {
 public:
  SafeAccess() {
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (ConvertStringSecurityDescriptorToSecurityDescriptorW(kSafeAccess, SDDL_REVISION_1,
                                                             &descriptor, nullptr) == 0) {
      throw SystemError("access rights cannot be made", GetLastError());
    }
    descriptor_.reset(descriptor);
  }

  // False when something of that name exists.
  bool CreateFolder(const std::wstring& path) const {
    SECURITY_ATTRIBUTES attributes = {sizeof(attributes), descriptor_.get(), FALSE};
    if (CreateDirectoryW(path.c_str(), &attributes) != 0) return true;
    if (GetLastError() != ERROR_ALREADY_EXISTS) Fail(path, GetLastError());
    return false;
  }

  // Gives an open file or folder these rights and this owner. Returns the error code.
  DWORD Give(HANDLE file) const {
    PSID owner = nullptr;
    PACL list = nullptr;
    BOOL present = FALSE;
    BOOL defaulted = FALSE;
    GetSecurityDescriptorOwner(descriptor_.get(), &owner, &defaulted);
    GetSecurityDescriptorDacl(descriptor_.get(), &present, &list, &defaulted);
    return SetSecurityInfo(file, SE_FILE_OBJECT,
                           OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION |
                               PROTECTED_DACL_SECURITY_INFORMATION,
                           owner, nullptr, list, nullptr);
  }

 private:
  LocalMemory descriptor_;
};

// Whether the files of an account may be used: the system's, administrators', and those of the user
// who runs this step.
bool IsTrusted(PSID account) {
  if (IsWellKnownSid(account, WinLocalSystemSid) != 0 ||
      IsWellKnownSid(account, WinBuiltinAdministratorsSid) != 0) {
    return true;
  }
  HANDLE opened = nullptr;
  if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened) == 0) return false;
  const SystemHandle token(opened);
  alignas(TOKEN_USER) std::array<BYTE, sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE> user;
  DWORD size = 0;
  return GetTokenInformation(token.get(), TokenUser, user.data(), static_cast<DWORD>(user.size()),
                             &size) != 0 &&
         EqualSid(reinterpret_cast<const TOKEN_USER*>(user.data())->User.Sid, account) != 0;
}

bool HasTrustedOwner(HANDLE file) {
  PSID owner = nullptr;
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  if (GetSecurityInfo(file, SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION, &owner, nullptr, nullptr,
                      nullptr, &descriptor) != ERROR_SUCCESS) {
    return false;
  }
  const LocalMemory freedAtEnd(descriptor);
  return IsTrusted(owner);
}

// False for a link, since a change to it would change something elsewhere.
bool IsOfKind(HANDLE file, Kind kind) {
  BY_HANDLE_FILE_INFORMATION found;
  if (GetFileInformationByHandle(file, &found) == 0) return false;
  if ((found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) return false;
  const bool isFolder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  return kind == Kind::kFolder ? isFolder : !isFolder && found.nNumberOfLinks == 1;
}

// Opens a link itself, not what it leads to.
SystemHandle OpenAsItIs(const std::wstring& path) {
  const HANDLE file =
      CreateFileW(path.c_str(), READ_CONTROL | WRITE_DAC | WRITE_OWNER | FILE_READ_ATTRIBUTES,
                  FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                  FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  return SystemHandle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

void MoveAside(const std::wstring& path) {
  constexpr int kMostNames = 100;
  DWORD error = 0;
  for (int i = 1; i <= kMostNames; ++i) {
    const std::wstring name = path + (i == 1 ? L"" : L"." + std::to_wstring(i)) + L".untrusted";
    if (MoveFileExW(path.c_str(), name.c_str(), 0) != 0) return;
    error = GetLastError();
    if (error != ERROR_ALREADY_EXISTS && error != ERROR_FILE_EXISTS) break;
  }
  Fail(path, error);
}

// Makes an existing file or folder safe. False when it was not trusted and was moved aside.
bool KeepIfTrusted(const std::wstring& path, Kind kind, const SafeAccess& access) {
  {
    const SystemHandle file = OpenAsItIs(path);
    const DWORD error = GetLastError();
    // What denies access to the system is not trusted.
    if (file == nullptr && error != ERROR_ACCESS_DENIED) Fail(path, error);
    if (file != nullptr && IsOfKind(file.get(), kind) && HasTrustedOwner(file.get())) {
      const DWORD status = access.Give(file.get());
      if (status != ERROR_SUCCESS) Fail(path, status);
      return true;
    }
  }
  MoveAside(path);
  return false;
}

void SecureFolder(const std::wstring& path, const SafeAccess& access) {
  if (access.CreateFolder(path) || KeepIfTrusted(path, Kind::kFolder, access)) return;
  if (!access.CreateFolder(path)) Fail(path, ERROR_ALREADY_EXISTS);
}

void SecureFile(const std::wstring& path, const SafeAccess& access) {
  if (GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES &&
      GetLastError() == ERROR_FILE_NOT_FOUND) {
    return;
  }
  KeepIfTrusted(path, Kind::kFile, access);
}

}  // namespace

void SecureDataFolder() {
  const std::wstring folder = DataFolderPath();
  if (folder.empty()) throw SystemError("there is no folder for program data", GetLastError());
  const std::wstring inner = folder.substr(0, folder.size() - 1);
  const std::wstring outer = inner.substr(0, inner.rfind(L'\\'));
  const SafeAccess access;
  // From the outside in, since the owner of a folder can exchange what is in it.
  SecureFolder(outer, access);
  SecureFolder(inner, access);
  SecureFile(folder + kHistoryFileName, access);
  SecureFile(folder + kDataFileName, access);
}

}  // namespace dozewell::setup
