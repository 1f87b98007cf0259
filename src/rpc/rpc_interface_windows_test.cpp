// What the compiler made of the interface definition: the form that calls have on the wire.

#include <doctest/doctest.h>
#include <rpc.h>
#include <windows.h>

#include <cstdint>
#include <cstring>
#include <iterator>
#include <string>

#include "dozewell_rpc.h"

namespace dozewell {
namespace {

// The codes of a format string that may occur here.
constexpr uint8_t kByte = 0x01;
constexpr uint8_t kChar = 0x02;
constexpr uint8_t kSmall = 0x03;
constexpr uint8_t kUnsignedSmall = 0x04;
constexpr uint8_t kLong = 0x08;
constexpr uint8_t kEnum16 = 0x0D;
constexpr uint8_t kReferencePointer = 0x11;
constexpr uint8_t kSimplePointer = 0x08;
constexpr uint8_t kStructure = 0x15;
constexpr uint8_t kBindPrimitive = 0x32;
constexpr uint8_t kEnd = 0x5B;

// Attributes of a parameter.
constexpr uint16_t kIn = 0x08;
constexpr uint16_t kOut = 0x10;
constexpr uint16_t kReturn = 0x20;
constexpr uint16_t kBaseType = 0x40;

constexpr size_t kParameterSize = 6;

const RPC_SERVER_INTERFACE& Interface() {
  return *static_cast<const RPC_SERVER_INTERFACE*>(Serve_DozewellControl_v1_0_s_ifspec);
}

const MIDL_SERVER_INFO& Server() {
  return *static_cast<const MIDL_SERVER_INFO*>(Interface().InterpreterInfo);
}

uint16_t Short(const uint8_t* format) {
  uint16_t number = 0;
  std::memcpy(&number, format, sizeof(number));
  return number;
}

std::string BaseTypeText(uint8_t code) {
  switch (code) {
    case kByte:
    case kChar:
    case kSmall:
    case kUnsignedSmall:
      return "byte";
    case kLong:
      return "long";
    case kEnum16:
      return "enum16";
    default:
      return "type " + std::to_string(code);
  }
}

std::string StructureText(const uint8_t* format) {
  std::string text = "structure of " + std::to_string(Short(format + 2)) + " bytes aligned to " +
                     std::to_string(format[1] + 1) + ":";
  for (const uint8_t* member = format + 4; *member != kEnd; ++member) {
    text += " " + BaseTypeText(*member);
  }
  return text;
}

std::string TypeText(const uint8_t* format) {
  if (*format == kStructure) return StructureText(format);
  if (*format != kReferencePointer) return "format " + std::to_string(*format);
  if ((format[1] & kSimplePointer) != 0) return BaseTypeText(format[2]);
  // The offset counts from its own place.
  return TypeText(format + 2 + static_cast<int16_t>(Short(format + 2)));
}

std::string ParameterText(const uint8_t* parameter) {
  const uint16_t attributes = Short(parameter);
  std::string text = (attributes & kReturn) != 0 ? "returns "
                     : (attributes & kIn) != 0   ? "in "
                     : (attributes & kOut) != 0  ? "out "
                                                 : "neither in nor out ";
  if ((attributes & kBaseType) != 0) return text + BaseTypeText(parameter[4]);
  return text + TypeText(Server().pStubDesc->pFormatTypes + Short(parameter + 4));
}

// The header of a procedure's format, and its parameters.
struct Procedure {
  const uint8_t* format;

  explicit Procedure(uint32_t number)
      : format(Server().ProcString + Server().FmtStringOffset[number]) {}

  uint8_t Binding() const { return format[0]; }
  uint16_t Number() const { return Short(format + 6); }
  std::string Text() const {
    const size_t parameters = format[15];
    const uint8_t* const first = format + 16 + format[16];
    std::string text;
    for (size_t i = 0; i < parameters; ++i) {
      text += (i == 0 ? "" : ", ") + ParameterText(first + i * kParameterSize);
    }
    return text;
  }
};

template <typename Function>
const void* Address(Function* function) {
  return reinterpret_cast<const void*>(function);
}

// The address of a function of another library, for which the linker put in a jump through its
// import.
const void* Target(const void* function) {
  const auto* const code = static_cast<const uint8_t*>(function);
  if (code[0] != 0xFF || code[1] != 0x25) return function;
  int32_t offset = 0;
  std::memcpy(&offset, code + 2, sizeof(offset));
  const void* target = nullptr;
  std::memcpy(&target, code + 6 + offset, sizeof(target));
  return target;
}

struct Expected {
  const void* routine;
  std::string parameters;
};

const std::string kBlock = "structure of 20 bytes aligned to 4: long long long long long";
const Expected kExpected[] = {
    {Address(Serve_Ping), "returns byte"},
    {Address(Serve_GetDriverEnabled), "out byte, returns byte"},
    {Address(Serve_SetFeatureEnabled), "in byte, returns byte"},
    {Address(Serve_GetFeatureEnabled), "out byte, returns byte"},
    {Address(Serve_SetWakeTime), "in enum16, in " + kBlock + ", returns byte"},
    {Address(Serve_SetWakeRaw), "in enum16, in long, returns byte"},
    {Address(Serve_GetWakeTime), "in enum16, out " + kBlock + ", returns byte"},
    {Address(Serve_GetWakeRaw), "in enum16, out long, returns byte"},
    {Address(Serve_GetPowerSettings), "in enum16, in enum16, out " + kBlock + ", returns byte"},
    {Address(Serve_SetPowerSettings), "in enum16, in enum16, in " + kBlock + ", returns byte"},
    {Address(Serve_GetActiveScheme), "out enum16, returns byte"},
    {Address(Serve_SetActiveScheme), "in enum16, returns byte"},
    {Address(Serve_ResetHistory), "in long, returns byte"},
    {Address(Serve_SetStrength), "in long, returns byte"},
    {Address(Serve_GetStrength), "out long, returns byte"},
};
constexpr uint32_t kProcedures = 15;
static_assert(std::size(kExpected) == kProcedures);

std::string GuidText(const GUID& guid) {
  wchar_t text[39];
  StringFromGUID2(guid, text, 39);
  return std::string(text, text + 38);
}

}  // namespace

TEST_CASE("the interface has its identifier and version") {
  const RPC_SYNTAX_IDENTIFIER& id = Interface().InterfaceId;
  CHECK(GuidText(id.SyntaxGUID) == "{914199A2-823A-4B9C-BE28-74A30D0DB73A}");
  CHECK(id.SyntaxVersion.MajorVersion == 1);
  CHECK(id.SyntaxVersion.MinorVersion == 0);
}

TEST_CASE("calls are transferred as NDR 2.0") {
  const RPC_SYNTAX_IDENTIFIER& syntax = Interface().TransferSyntax;
  CHECK(GuidText(syntax.SyntaxGUID) == "{8A885D04-1CEB-11C9-9FE8-08002B104860}");
  CHECK(syntax.SyntaxVersion.MajorVersion == 2);
  CHECK(syntax.SyntaxVersion.MinorVersion == 0);
}

TEST_CASE("the interface names no endpoints of its own") {
  CHECK(Interface().RpcProtseqEndpointCount == 0);
  CHECK(Interface().RpcProtseqEndpoint == nullptr);
}

TEST_CASE("every call is dispatched by the interpreter, with bounds checked") {
  const RPC_DISPATCH_TABLE& table = *Interface().DispatchTable;
  REQUIRE(table.DispatchTableCount == kProcedures);
  for (uint32_t number = 0; number < kProcedures; ++number) {
    CHECK(Target(Address(table.DispatchTable[number])) == Address(NdrServerCall2));
  }
  CHECK(Server().pStubDesc->fCheckBounds == 1);
}

TEST_CASE("the stubs take their memory from the program") {
  CHECK(Address(Server().pStubDesc->pfnAllocate) == Address(MIDL_user_allocate));
  CHECK(Address(Server().pStubDesc->pfnFree) == Address(MIDL_user_free));
}

TEST_CASE("the procedures have their numbers, parameters and an implicit primitive binding") {
  for (uint32_t number = 0; number < kProcedures; ++number) {
    CAPTURE(number);
    const Procedure procedure(number);
    CHECK(procedure.Binding() == kBindPrimitive);
    CHECK(procedure.Number() == number);
    CHECK(Address(Server().DispatchTable[number]) == kExpected[number].routine);
    CHECK(procedure.Text() == kExpected[number].parameters);
  }
}

}  // namespace dozewell
