#ifndef DOZEWELL_TESTS_SUPPORT_SYSTEM_CALLS_WINDOWS_H_
#define DOZEWELL_TESTS_SUPPORT_SYSTEM_CALLS_WINDOWS_H_

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <type_traits>
#include <utility>

#include "support/calls.h"

namespace dozewell::support {

// Shows what the leaves pass to the system, argument by argument: while an ImportStub lives, its
// function of the system is not called, and the stub notes and answers each call instead.

// The texts that stand for arguments: numbers and handles in hexadecimal, texts in quotes, GUIDs in
// braces. The addresses of memory and functions differ from run to run, so they are only named as
// such.
std::string ArgumentText(uint64_t number);
std::string ArgumentText(const char* text);
std::string ArgumentText(const wchar_t* text);
std::string ArgumentText(const unsigned short* text);  // the RPC runtime's
std::string ArgumentText(const void* address);
std::string GuidText(const void* guid);

inline std::string ArgumentText(std::nullptr_t) { return "null"; }

// Stand for some memory and some function in the calls that a test expects.
inline constexpr struct Memory {
} kMemory;
inline constexpr struct Function {
} kFunction;
inline std::string ArgumentText(Memory) { return "memory"; }
inline std::string ArgumentText(Function) { return "function"; }

template <typename Number>
requires std::integral<Number> || std::is_enum_v<Number> std::string ArgumentText(Number number) {
  return ArgumentText(static_cast<uint64_t>(number));
}

template <typename Guid>
requires requires(Guid guid) { guid.Data4; }
std::string ArgumentText(const Guid& guid) { return GuidText(&guid); }

template <typename Guid>
requires requires(Guid guid) { guid.Data4; }
std::string ArgumentText(const Guid* guid) { return guid == nullptr ? "null" : GuidText(guid); }

template <typename Result, typename... Arguments>
std::string ArgumentText(Result (*function)(Arguments...)) {
  return function == nullptr ? "null" : "function";
}

// A call as a stub notes it.
template <typename... Arguments>
std::string SystemCall(const std::string& name, const Arguments&... arguments) {
  std::string texts;
  ((texts += (texts.empty() ? "" : ", ") + ArgumentText(arguments)), ...);
  return name + "(" + texts + ")";
}

void NoteSystemCall(const std::string& call);

// What has been noted since it was last taken.
Calls TakeSystemCalls();

// Has this program call another function in place of one that it imports, and returns what it
// called before. Throws std::runtime_error when it imports none of that name.
void* ReplaceImport(const char* name, void* function);

// A text that can be a template's argument.
template <size_t kSize>
struct FixedText {
  char text[kSize] = {};

  // NOLINTNEXTLINE(google-explicit-constructor): stands for the literal.
  consteval FixedText(const char (&literal)[kSize]) {
    for (size_t i = 0; i < kSize; ++i) text[i] = literal[i];
  }
};

// Stands in for a function of the system; at most one at a time for each.
template <FixedText kName, typename Function>
class ImportStub;

template <FixedText kName, typename Result, typename... Arguments>
class ImportStub<kName, Result(Arguments...)> {
 public:
  using Answer = std::function<Result(Arguments...)>;

  // Answers 0, null or nothing; always the same; or what a function does.
  ImportStub() : ImportStub(Answer([](Arguments...) { return Result(); })) {}
  template <std::convertible_to<Result> Value>
  explicit ImportStub(Value answer)
      : ImportStub(Answer([answer](Arguments...) -> Result { return answer; })) {}
  explicit ImportStub(Answer answer) {
    answer_ = std::move(answer);
    system_ = ReplaceImport(kName.text, reinterpret_cast<void*>(Stub));
  }
  // NOLINTNEXTLINE(bugprone-exception-escape): the constructor has found the import.
  ~ImportStub() { ReplaceImport(kName.text, system_); }
  ImportStub(const ImportStub&) = delete;
  ImportStub& operator=(const ImportStub&) = delete;

 private:
  static Result Stub(Arguments... arguments) {
    NoteSystemCall(SystemCall(kName.text, arguments...));
    return answer_(arguments...);
  }

  static inline Answer answer_;
  void* system_ = nullptr;
};

}  // namespace dozewell::support

#endif  // DOZEWELL_TESTS_SUPPORT_SYSTEM_CALLS_WINDOWS_H_
