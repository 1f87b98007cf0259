#include <windows.h>
// After windows.h, which they need.
#include <aclapi.h>
#include <sddl.h>

#include <array>

#include "base/utf8.h"
#include "setup/safe_access.h"
#include "setup/system_error.h"

namespace dozewell::setup {
namespace {

constexpr wchar_t kForAdministrators[] = L"O:BAG:BAD:P(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)";
constexpr wchar_t kForUsers[] =
    L"O:BAG:BAD:P(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)(A;OICI;0x1200a9;;;BU)";

// Owns the program folders of every Windows.
constexpr wchar_t kSystemsInstaller[] =
    L"S-1-5-80-956008885-3418522649-1831038044-1853292631-2271478464";

constexpr uint32_t kAllRights = FILE_ALL_ACCESS | GENERIC_ALL;

bool IsSystemsInstaller(PSID account) {
  PSID installer = nullptr;
  if (ConvertStringSidToSidW(kSystemsInstaller, &installer) == 0) return false;
  const LocalMemory freedAtEnd(installer);
  return EqualSid(installer, account) != 0;
}

bool IsUserOfThisProgram(PSID account) {
  HANDLE opened = nullptr;
  if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened) == 0) return false;
  const SystemHandle token(opened);
  alignas(TOKEN_USER) std::array<BYTE, sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE> user;
  DWORD size = 0;
  return GetTokenInformation(token.get(), TokenUser, user.data(), static_cast<DWORD>(user.size()),
                             &size) != 0 &&
         EqualSid(reinterpret_cast<const TOKEN_USER*>(user.data())->User.Sid, account) != 0;
}

bool IsTrusted(PSID account) {
  return IsWellKnownSid(account, WinLocalSystemSid) != 0 ||
         IsWellKnownSid(account, WinBuiltinAdministratorsSid) != 0 || IsSystemsInstaller(account) ||
         IsUserOfThisProgram(account);
}

// These stand for the owner of what they are on, who is looked at too.
bool StandsForOwner(PSID account) {
  return IsWellKnownSid(account, WinCreatorOwnerSid) != 0 ||
         IsWellKnownSid(account, WinCreatorOwnerRightsSid) != 0;
}

// The account of an entry that allows something; null for an entry that does not.
PSID AllowedAccount(ACE_HEADER* entry) {
  switch (entry->AceType) {
    case ACCESS_ALLOWED_ACE_TYPE:
    case ACCESS_ALLOWED_CALLBACK_ACE_TYPE:
      // Both begin alike.
      return &reinterpret_cast<ACCESS_ALLOWED_ACE*>(entry)->SidStart;
    default:
      return nullptr;
  }
}

}  // namespace

const uint32_t kRightsToReplace =
    FILE_DELETE_CHILD | DELETE | WRITE_DAC | WRITE_OWNER | GENERIC_ALL;
const uint32_t kRightsToChange = kRightsToReplace | FILE_WRITE_DATA | FILE_APPEND_DATA |
                                 FILE_WRITE_EA | FILE_WRITE_ATTRIBUTES | GENERIC_WRITE;
const uint32_t kRightsToRead = FILE_READ_DATA | GENERIC_READ | GENERIC_ALL;

SafeAccess::SafeAccess(Readers readers)
    : SafeAccess(std::wstring(readers == Readers::kUsers ? kForUsers : kForAdministrators)) {}

SafeAccess::SafeAccess(const std::wstring& text) {
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  if (ConvertStringSecurityDescriptorToSecurityDescriptorW(text.c_str(), SDDL_REVISION_1,
                                                           &descriptor, nullptr) == 0) {
    throw SystemError("access rights cannot be made", GetLastError());
  }
  descriptor_.reset(descriptor);
}

bool SafeAccess::CreateFolder(const std::wstring& path) const {
  SECURITY_ATTRIBUTES attributes = {sizeof(attributes), descriptor_.get(), FALSE};
  if (CreateDirectoryW(path.c_str(), &attributes) != 0) return true;
  const DWORD error = GetLastError();
  if (error != ERROR_ALREADY_EXISTS) {
    throw SystemError(NarrowToUtf8(path) + ": cannot be created", error);
  }
  return false;
}

// SetSecurityInfo would go through all that is in a folder and change that too.
uint32_t SafeAccess::Give(void* file) const {
  SECURITY_DESCRIPTOR_CONTROL control = 0;
  DWORD revision = 0;
  if (GetSecurityDescriptorControl(descriptor_.get(), &control, &revision) == 0) {
    return GetLastError();
  }
  // Keeps the mark that rights were inherited.
  if ((control & SE_DACL_AUTO_INHERITED) != 0) {
    SetSecurityDescriptorControl(descriptor_.get(), SE_DACL_AUTO_INHERIT_REQ,
                                 SE_DACL_AUTO_INHERIT_REQ);
  }
  const SECURITY_INFORMATION protection = (control & SE_DACL_PROTECTED) != 0
                                              ? PROTECTED_DACL_SECURITY_INFORMATION
                                              : UNPROTECTED_DACL_SECURITY_INFORMATION;
  return SetKernelObjectSecurity(
             file, OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION | protection,
             descriptor_.get()) != 0
             ? ERROR_SUCCESS
             : GetLastError();
}

SystemHandle OpenAsItIs(const std::wstring& path, bool toChange) {
  const DWORD change = toChange ? WRITE_DAC | WRITE_OWNER : 0;
  const HANDLE file = CreateFileW(
      path.c_str(), READ_CONTROL | FILE_READ_ATTRIBUTES | change,
      FILE_SHARE_READ | FILE_SHARE_WRITE | (toChange ? 0 : FILE_SHARE_DELETE), nullptr,
      OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  return SystemHandle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

FileKind KindOf(void* file) {
  BY_HANDLE_FILE_INFORMATION found;
  if (GetFileInformationByHandle(file, &found) == 0) return FileKind::kLink;
  if ((found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) return FileKind::kLink;
  if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return FileKind::kFolder;
  return found.nNumberOfLinks == 1 ? FileKind::kFile : FileKind::kLink;
}

AccessOfOthers ReadAccessOfOthers(void* file) {
  PSID owner = nullptr;
  PACL list = nullptr;
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  if (GetSecurityInfo(file, SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION,
                      &owner, nullptr, &list, nullptr, &descriptor) != ERROR_SUCCESS) {
    return {true, kAllRights, kAllRights};
  }
  const LocalMemory freedAtEnd(descriptor);
  AccessOfOthers access = {owner == nullptr || !IsTrusted(owner), 0, 0};
  // Without a list, everybody may do everything.
  if (list == nullptr) return {access.isOwner, kAllRights, kAllRights};
  for (DWORD i = 0; i < list->AceCount; ++i) {
    void* at = nullptr;
    if (GetAce(list, i, &at) == 0) return {access.isOwner, kAllRights, kAllRights};
    auto* const entry = static_cast<ACE_HEADER*>(at);
    const PSID account = AllowedAccount(entry);
    if (account == nullptr || IsTrusted(account) || StandsForOwner(account)) continue;
    const DWORD rights = static_cast<const ACCESS_ALLOWED_ACE*>(at)->Mask;
    if ((entry->AceFlags & INHERIT_ONLY_ACE) == 0) access.rights |= rights;
    if ((entry->AceFlags & (OBJECT_INHERIT_ACE | CONTAINER_INHERIT_ACE)) != 0) {
      access.inherited |= rights;
    }
  }
  return access;
}

std::wstring AccessTextOf(void* file) {
  constexpr SECURITY_INFORMATION kParts = OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  if (GetSecurityInfo(file, SE_FILE_OBJECT, kParts, nullptr, nullptr, nullptr, nullptr,
                      &descriptor) != ERROR_SUCCESS) {
    return {};
  }
  const LocalMemory freedAtEnd(descriptor);
  wchar_t* text = nullptr;
  if (ConvertSecurityDescriptorToStringSecurityDescriptorW(descriptor, SDDL_REVISION_1, kParts,
                                                           &text, nullptr) == 0) {
    return {};
  }
  const LocalMemory textFreedAtEnd(text);
  return text;
}

bool OthersMayChange(const AccessOfOthers& access) {
  return access.isOwner || ((access.rights | access.inherited) & kRightsToChange) != 0;
}

}  // namespace dozewell::setup
