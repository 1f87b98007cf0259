// Files that others hold open, and whose rights are to be kept.

#include <doctest/doctest.h>
#include <windows.h>
// After windows.h, which it needs.
#include <sddl.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "base/durable_file.h"
#include "base/side_file.h"
#include "base/system_handle.h"
#include "support/temp_folder.h"

namespace dozewell {
namespace {

struct LocalFreer {
  void operator()(void* memory) const { LocalFree(memory); }
};

// Somebody else's open handle.
SystemHandle Hold(const std::wstring& path, DWORD access, DWORD sharing) {
  const HANDLE file = CreateFileW(path.c_str(), access, sharing, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  REQUIRE(file != INVALID_HANDLE_VALUE);
  return SystemHandle(file);
}

std::string TextOf(const FileContent& content) {
  return content.failure ? "-" : std::string(content.bytes.begin(), content.bytes.end());
}

struct Folder {
  TempFolder folder;
  std::wstring path = folder.File(L"f");

  Folder() { REQUIRE(WriteWholeFile(path, "old", 3)); }

  bool Write(const std::string& text) const {
    return WriteDurableFile(path, text.data(), text.size());
  }
  std::string At(const wchar_t* suffix) const { return TextOf(ReadContent(path + suffix)); }
};

// Owner and access rights as text.
std::wstring RightsOf(const std::wstring& path) {
  constexpr SECURITY_INFORMATION kParts = OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;
  DWORD size = 0;
  GetFileSecurityW(path.c_str(), kParts, nullptr, 0, &size);
  std::vector<BYTE> descriptor(size);
  REQUIRE(GetFileSecurityW(path.c_str(), kParts, descriptor.data(), size, &size));
  wchar_t* text = nullptr;
  REQUIRE(ConvertSecurityDescriptorToStringSecurityDescriptorW(descriptor.data(), SDDL_REVISION_1,
                                                               kParts, &text, nullptr));
  const std::unique_ptr<wchar_t, LocalFreer> freedAtEnd(text);
  return text;
}

void SetRights(const std::wstring& path, const wchar_t* rights) {
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  REQUIRE(ConvertStringSecurityDescriptorToSecurityDescriptorW(rights, SDDL_REVISION_1, &descriptor,
                                                               nullptr));
  const std::unique_ptr<void, LocalFreer> freedAtEnd(descriptor);
  REQUIRE(SetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, descriptor));
}

uint64_t IdentityOf(const std::wstring& path) {
  const SystemHandle file = Hold(path, FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE);
  BY_HANDLE_FILE_INFORMATION found;
  REQUIRE(GetFileInformationByHandle(file.get(), &found));
  return uint64_t{found.nFileIndexHigh} << 32 | found.nFileIndexLow;
}

}  // namespace

TEST_CASE("a file that somebody keeps others from reading is held, and not set aside") {
  const Folder folder;
  {
    const SystemHandle holder = Hold(folder.path, GENERIC_READ, FILE_SHARE_WRITE);
    CHECK(ReadBeforeWriting(folder.path).failure == FileFailure::Held);
  }
  {
    const SystemHandle holder =
        Hold(folder.path, GENERIC_READ, FILE_SHARE_WRITE | FILE_SHARE_DELETE);
    CHECK(ReadBeforeWriting(folder.path).failure == FileFailure::Held);
  }
  CHECK(TextOf(ReadBeforeWriting(folder.path)) == "old");
  CHECK(folder.At(L".unread") == "-");
}

TEST_CASE("a file that somebody holds and lets others write is written in place") {
  const Folder folder;
  const uint64_t before = IdentityOf(folder.path);
  {
    const SystemHandle holder = Hold(folder.path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
    CHECK(folder.Write("newer"));
    CHECK(folder.At(L"") == "newer");
    CHECK(folder.At(L".new") == "-");
  }
  CHECK(IdentityOf(folder.path) == before);
  CHECK(folder.Write("newest"));
  CHECK(folder.At(L"") == "newest");
  CHECK(IdentityOf(folder.path) != before);
}

TEST_CASE("content waits beside a file that somebody keeps others from writing") {
  for (const DWORD sharing : {DWORD{FILE_SHARE_READ}, DWORD{FILE_SHARE_READ | FILE_SHARE_DELETE}}) {
    CAPTURE(sharing);
    const Folder folder;
    {
      const SystemHandle holder = Hold(folder.path, GENERIC_READ, sharing);
      CHECK_FALSE(folder.Write("newer"));
      CHECK(folder.At(L"") == "old");
      CHECK(TextOf(ReadDurableFile(folder.path)) == "newer");
      FinishWriting(folder.path);
      CHECK_FALSE(folder.Write("newest"));
      CHECK(folder.At(L"") == "old");
      CHECK(TextOf(ReadDurableFile(folder.path)) == "newest");
    }
    FinishWriting(folder.path);
    CHECK(folder.At(L"") == "newest");
    for (const wchar_t* const suffix : kSideFileSuffixes) CHECK(folder.At(suffix) == "-");
  }
}

TEST_CASE("content that somebody holds is not written past") {
  const Folder folder;
  {
    const SystemHandle holder = Hold(folder.path, GENERIC_READ, FILE_SHARE_READ);
    CHECK_FALSE(folder.Write("newer"));
  }
  {
    const SystemHandle holder = Hold(folder.path + L".new", GENERIC_READ, FILE_SHARE_READ);
    FinishWriting(folder.path);
    CHECK(folder.At(L"") == "newer");
    CHECK_FALSE(folder.Write("newest"));
    CHECK(TextOf(ReadDurableFile(folder.path)) == "newer");
  }
  CHECK(folder.Write("newest"));
  CHECK(folder.At(L"") == "newest");
  CHECK(folder.At(L".new") == "-");
}

TEST_CASE("a replaced file keeps its owner and its access rights") {
  for (const wchar_t* const rights :
       {L"D:P(A;;FA;;;BA)(A;;FA;;;SY)", L"D:(A;;FA;;;BA)(A;;FA;;;SY)(A;;FR;;;WD)"}) {
    const Folder folder;
    SetRights(folder.path, rights);
    const std::wstring before = RightsOf(folder.path);
    const uint64_t identity = IdentityOf(folder.path);
    CHECK(folder.Write("new"));
    CHECK(RightsOf(folder.path) == before);
    CHECK(IdentityOf(folder.path) != identity);
  }
}

TEST_CASE("a side file is nobody's to open before it is closed") {
  const Folder folder;
  const std::wstring beside = folder.path + L".part";
  File file = CreateSideFile(beside, folder.path);
  REQUIRE(file);
  CHECK(ReadContent(beside).failure == FileFailure::Held);
  CHECK_FALSE(CreateSideFile(beside, folder.path));
  file.reset();
  CHECK(folder.At(L".part").empty());
}

}  // namespace dozewell
