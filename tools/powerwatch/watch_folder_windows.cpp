#include <windows.h>
// After windows.h, which they need.
#include <sddl.h>
#include <shlobj.h>

#include <memory>
#include <stdexcept>

#include "base/utf8.h"
#include "powerwatch/watch_folder.h"
#include "service/service_manager.h"
#include "setup/local_memory.h"
#include "setup/safe_access.h"
#include "setup/system_error.h"

namespace dozewell::powerwatch {
namespace {

using setup::SystemError;

// Administrators own them, nothing is inherited from outside, and LS is the watch's account. It may
// read and run in the folder; of the file it may read the attributes and append.
constexpr wchar_t kFolderAccess[] =
    L"O:BAG:BAD:P(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)(A;OICI;0x1200a9;;;LS)";
constexpr wchar_t kFileAccess[] = L"O:BAG:BAD:P(A;;FA;;;SY)(A;;FA;;;BA)(A;;0x120084;;;LS)";

struct TaskMemoryFreer {
  void operator()(wchar_t* text) const { CoTaskMemFree(text); }
};

// Access rights for something new.
class NewAccess {
 public:
  explicit NewAccess(const wchar_t* access) {
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (ConvertStringSecurityDescriptorToSecurityDescriptorW(access, SDDL_REVISION_1, &descriptor,
                                                             nullptr) == 0) {
      throw SystemError("access rights cannot be made", GetLastError());
    }
    descriptor_.reset(descriptor);
    attributes_ = {sizeof(attributes_), descriptor, FALSE};
  }
  SECURITY_ATTRIBUTES* Attributes() { return &attributes_; }

 private:
  setup::LocalMemory descriptor_;
  SECURITY_ATTRIBUTES attributes_ = {};
};

void CreateFolder(const std::wstring& path) {
  if (CreateDirectoryW(path.c_str(), NewAccess(kFolderAccess).Attributes()) != 0) return;
  const DWORD error = GetLastError();
  if (error == ERROR_ALREADY_EXISTS) {
    throw std::runtime_error(NarrowToUtf8(path) +
                             ": exists already; look at what is in it, and delete it");
  }
  throw SystemError(NarrowToUtf8(path) + ": cannot be created", error);
}

void CopyThisProgram(const std::wstring& path) {
  if (CopyFileW(ModulePath().c_str(), path.c_str(), /*failIfExists*/ TRUE) == 0) {
    throw SystemError(NarrowToUtf8(path) + ": cannot be copied", GetLastError());
  }
}

void CreateEmptyFile(const std::wstring& path) {
  const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0,
                                  NewAccess(kFileAccess).Attributes(), CREATE_NEW, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    throw SystemError(NarrowToUtf8(path) + ": cannot be created", GetLastError());
  }
  CloseHandle(file);
}

// A service counts as stopped before its process has ended, but its program and what it holds open
// can be deleted only then.
void DeleteWhenFree(const std::wstring& path) {
  constexpr ULONGLONG kLongestWaitMs = 10'000;
  constexpr DWORD kPauseMs = 50;
  const ULONGLONG begin = GetTickCount64();
  while (DeleteFileW(path.c_str()) == 0) {
    const DWORD error = GetLastError();
    if (error == ERROR_FILE_NOT_FOUND) return;
    const bool isHeld = error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION;
    if (!isHeld || GetTickCount64() - begin >= kLongestWaitMs) {
      throw SystemError(NarrowToUtf8(path) + ": cannot be deleted", error);
    }
    Sleep(kPauseMs);
  }
}

}  // namespace

WatchPlaces FindPlaces() {
  wchar_t* text = nullptr;
  const HRESULT result = SHGetKnownFolderPath(FOLDERID_ProgramData, 0, nullptr, &text);
  const std::unique_ptr<wchar_t, TaskMemoryFreer> programData(text);
  if (FAILED(result)) {
    throw SystemError("there is no folder for program data", static_cast<uint32_t>(result));
  }
  return PlacesIn(programData.get());
}

void MakeFolder(const WatchPlaces& places) {
  CreateFolder(places.folder);
  try {
    CopyThisProgram(places.program);
    CreateEmptyFile(places.file);
  } catch (...) {
    DeleteFileW(places.program.c_str());
    RemoveDirectoryW(places.folder.c_str());
    throw;
  }
}

void DeleteFolder(const WatchPlaces& places) {
  const std::string name = NarrowToUtf8(places.folder);
  {
    const SystemHandle folder = setup::OpenAsItIs(places.folder, /*toChange*/ false);
    const DWORD error = GetLastError();
    if (folder == nullptr && error == ERROR_FILE_NOT_FOUND) return;
    if (folder == nullptr) throw SystemError(name + ": its access rights cannot be read", error);
    if (setup::KindOf(folder.get()) != setup::FileKind::kFolder ||
        setup::OthersMayChange(setup::ReadAccessOfOthers(folder.get()))) {
      throw std::runtime_error(name + ": others may change it, so it is left as it is");
    }
  }
  DeleteWhenFree(places.program);
  DeleteWhenFree(places.file);
  if (RemoveDirectoryW(places.folder.c_str()) == 0) {
    throw SystemError(name + ": cannot be deleted", GetLastError());
  }
}

}  // namespace dozewell::powerwatch
