#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <array>
#include <bit>
#include <cerrno>
#include <cstdint>
#include <memory>
#include <vector>

#include "base/side_file.h"
#include "base/system_handle.h"

namespace dozewell {
namespace {

SystemHandle Open(const std::wstring& path, DWORD access, DWORD sharing, DWORD disposition,
                  DWORD flags) {
  const HANDLE file =
      CreateFileW(path.c_str(), access, sharing, nullptr, disposition, flags, nullptr);
  return SystemHandle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

// Opens a link itself, not its target. This works on files that others hold, and does not keep
// others from opening them.
SystemHandle OpenToLook(const std::wstring& path) {
  return Open(path, READ_CONTROL | FILE_READ_ATTRIBUTES,
              FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, OPEN_EXISTING,
              FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS);
}

// Owner and access rights of a file; empty when they cannot be read.
class Security {
 public:
  explicit Security(HANDLE file) {
    constexpr SECURITY_INFORMATION kParts = OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;
    DWORD size = 0;
    GetKernelObjectSecurity(file, kParts, nullptr, 0, &size);
    descriptor_.resize(size);
    if (size == 0 || !GetKernelObjectSecurity(file, kParts, Descriptor(), size, &size)) {
      descriptor_.clear();
    }
  }

  explicit operator bool() const { return !descriptor_.empty(); }

  PSID Owner() {
    PSID owner = nullptr;
    BOOL defaulted = FALSE;
    return *this && GetSecurityDescriptorOwner(Descriptor(), &owner, &defaulted) ? owner : nullptr;
  }

  // Whether the owner could be set is checked by HasOwnerOf before the file is replaced.
  bool Give(HANDLE file) {
    SetKernelObjectSecurity(file, OWNER_SECURITY_INFORMATION, Descriptor());
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD revision = 0;
    if (!GetSecurityDescriptorControl(Descriptor(), &control, &revision)) return false;
    // Keeps the mark that rights were inherited from the folder.
    if ((control & SE_DACL_AUTO_INHERITED) != 0) {
      SetSecurityDescriptorControl(Descriptor(), SE_DACL_AUTO_INHERIT_REQ,
                                   SE_DACL_AUTO_INHERIT_REQ);
    }
    const SECURITY_INFORMATION protection = (control & SE_DACL_PROTECTED) != 0
                                                ? PROTECTED_DACL_SECURITY_INFORMATION
                                                : UNPROTECTED_DACL_SECURITY_INFORMATION;
    return SetKernelObjectSecurity(file, DACL_SECURITY_INFORMATION | protection, Descriptor()) != 0;
  }

 private:
  PSECURITY_DESCRIPTOR Descriptor() { return descriptor_.data(); }

  std::vector<BYTE> descriptor_;
};

bool IsThisAccount(PSID account) {
  HANDLE opened = nullptr;
  if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened)) return false;
  const SystemHandle token(opened);
  alignas(TOKEN_USER) std::array<BYTE, sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE> user;
  DWORD size = 0;
  return GetTokenInformation(token.get(), TokenUser, user.data(), static_cast<DWORD>(user.size()),
                             &size) &&
         EqualSid(reinterpret_cast<const TOKEN_USER*>(user.data())->User.Sid, account);
}

bool IsTrusted(PSID account) {
  return IsWellKnownSid(account, WinLocalSystemSid) ||
         IsWellKnownSid(account, WinBuiltinAdministratorsSid) || IsThisAccount(account);
}

bool IsPlainFile(HANDLE file) {
  BY_HANDLE_FILE_INFORMATION found;
  return GetFileInformationByHandle(file, &found) &&
         (found.dwFileAttributes & (FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_DIRECTORY)) ==
             0 &&
         found.nNumberOfLinks == 1;
}

bool IsMissing() {
  return GetLastError() == ERROR_FILE_NOT_FOUND || GetLastError() == ERROR_PATH_NOT_FOUND;
}

// Leaves the reason of a failure where the C runtime leaves its own.
void SetReason(DWORD error) {
  _doserrno = error;
  switch (WhyFileFailed()) {
    case FileFailure::Missing:
      errno = ENOENT;
      break;
    case FileFailure::NoRoom:
      errno = ENOSPC;
      break;
    default:
      errno = error == ERROR_INVALID_NAME ? EINVAL : EACCES;
  }
}

bool GiveRightsOf(const std::wstring& replaced, HANDLE file) {
  const SystemHandle model = OpenToLook(replaced);
  if (!model) return IsMissing();
  Security security(model.get());
  return security && security.Give(file);
}

}  // namespace

File CreateSideFile(const std::wstring& path, const std::wstring& replaced) {
  SystemHandle file = Open(path, GENERIC_WRITE | WRITE_DAC | WRITE_OWNER, /*sharing=*/0, CREATE_NEW,
                           FILE_ATTRIBUTE_NORMAL);
  if (!file) {
    SetReason(GetLastError());
    return nullptr;
  }
  if (!GiveRightsOf(replaced, file.get())) {
    file.reset();
    RemoveFile(path);
    SetReason(ERROR_ACCESS_DENIED);
    return nullptr;
  }
  const int descriptor =
      _open_osfhandle(std::bit_cast<intptr_t>(file.get()), _O_WRONLY | _O_BINARY);
  if (descriptor < 0) return nullptr;
  static_cast<void>(file.release());
  File stream(_wfdopen(descriptor, L"wb"));
  if (!stream) _close(descriptor);
  return stream;
}

bool HasOwnerOf(const std::wstring& path, const std::wstring& replaced) {
  const SystemHandle model = OpenToLook(replaced);
  if (!model) return IsMissing();
  const SystemHandle file = OpenToLook(path);
  if (!file) return false;
  Security modelSecurity(model.get());
  Security security(file.get());
  const PSID modelOwner = modelSecurity.Owner();
  const PSID owner = security.Owner();
  return modelOwner != nullptr && owner != nullptr && EqualSid(owner, modelOwner);
}

bool IsOwnSideFile(const std::wstring& path, const std::wstring& replaced) {
  const SystemHandle file = OpenToLook(path);
  if (!file || !IsPlainFile(file.get())) return false;
  Security security(file.get());
  const PSID owner = security.Owner();
  return owner != nullptr && (IsTrusted(owner) || HasOwnerOf(path, replaced));
}

}  // namespace dozewell
