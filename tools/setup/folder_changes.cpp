#include "setup/folder_changes.h"

#include <array>
#include <stdexcept>

namespace dozewell::setup {
namespace {

// By their kinds. No path has a bar.
constexpr std::array<const wchar_t*, 3> kKindNames = {L"made", L"moved", L"rights"};
constexpr wchar_t kBar = L'|';

}  // namespace

std::wstring NoteOf(const FolderChange& change) {
  return std::wstring(kKindNames[change.kind]) + kBar + change.path + kBar + change.detail;
}

FolderChange FolderChangeOf(const std::wstring& note) {
  const size_t first = note.find(kBar);
  const size_t second = note.find(kBar, first + 1);
  if (first != std::wstring::npos && second != std::wstring::npos) {
    for (size_t kind = 0; kind < kKindNames.size(); ++kind) {
      if (note.substr(0, first) != kKindNames[kind]) continue;
      return {static_cast<FolderChange::Kind>(kind), note.substr(first + 1, second - first - 1),
              note.substr(second + 1)};
    }
  }
  throw std::runtime_error("a note of what undoes the installation cannot be read");
}

}  // namespace dozewell::setup
