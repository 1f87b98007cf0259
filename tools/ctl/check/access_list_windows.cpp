#include <windows.h>

#include <cstddef>

#include "base/system_handle.h"
#include "base/utf8.h"
#include "ctl/check/access_list.h"
#include "ctl/check/sid_text.h"

namespace dozewell::ctl {
namespace {

void ReadEntries(ACL* list, AccessList& access) {
  for (DWORD i = 0; i < list->AceCount; ++i) {
    void* found = nullptr;
    if (GetAce(list, i, &found) == 0) continue;
    auto* const entry = static_cast<ACCESS_ALLOWED_ACE*>(found);
    // Both kinds begin alike.
    const BYTE type = entry->Header.AceType;
    if (type != ACCESS_ALLOWED_ACE_TYPE && type != ACCESS_ALLOWED_CALLBACK_ACE_TYPE) continue;
    access.allowed.push_back(
        {SidText(&entry->SidStart), entry->Mask, (entry->Header.AceFlags & INHERIT_ONLY_ACE) != 0});
  }
}

void ReadDescriptor(SECURITY_DESCRIPTOR* descriptor, AccessList& access) {
  PSID owner = nullptr;
  BOOL isDefault = FALSE;
  if (GetSecurityDescriptorOwner(descriptor, &owner, &isDefault) != 0 && owner != nullptr) {
    access.owner = SidText(owner);
  }
  BOOL hasList = FALSE;
  ACL* list = nullptr;
  if (GetSecurityDescriptorDacl(descriptor, &hasList, &list, &isDefault) == 0) {
    access.error = GetLastError();
  } else if (hasList == FALSE || list == nullptr) {
    access.opensToAll = true;
  } else {
    ReadEntries(list, access);
  }
}

}  // namespace

AccessList ReadAccessList(void* handle) {
  constexpr SECURITY_INFORMATION kParts = OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;
  AccessList access;
  DWORD size = 0;
  GetKernelObjectSecurity(handle, kParts, nullptr, 0, &size);
  if (GetLastError() != ERROR_INSUFFICIENT_BUFFER) {
    access.error = GetLastError();
    return access;
  }
  std::vector<std::byte> room(size);
  auto* const descriptor = reinterpret_cast<SECURITY_DESCRIPTOR*>(room.data());
  if (GetKernelObjectSecurity(handle, kParts, descriptor, size, &size) == 0) {
    access.error = GetLastError();
  } else {
    ReadDescriptor(descriptor, access);
  }
  return access;
}

PathAccess ReadPathAccess(const std::wstring& path) {
  PathAccess found;
  found.path = NarrowToUtf8(path);
  const HANDLE opened =
      CreateFileW(path.c_str(), READ_CONTROL | FILE_READ_ATTRIBUTES,
                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                  FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
  if (opened == INVALID_HANDLE_VALUE) {
    found.error = GetLastError();
    return found;
  }
  const SystemHandle file(opened);
  BY_HANDLE_FILE_INFORMATION information = {};
  if (GetFileInformationByHandle(file.get(), &information) == 0) {
    found.error = GetLastError();
    return found;
  }
  const DWORD attributes = information.dwFileAttributes;
  found.isLink = (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
  found.hasOtherNames =
      (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0 && information.nNumberOfLinks > 1;
  found.access = ReadAccessList(file.get());
  return found;
}

}  // namespace dozewell::ctl
