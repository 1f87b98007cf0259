#include <rpc.h>
#include <windows.h>

#include "ctl/guarded_call.h"

#ifdef _MSC_VER

namespace dozewell::ctl {

uint32_t GuardedCall(void (*call)(void* context), void* context) {
  __try {
    call(context);
    return 0;
  } __except (I_RpcExceptionFilter(GetExceptionCode())) {
    return GetExceptionCode();
  }
}

}  // namespace dozewell::ctl

#else

// Other compilers have no syntax for a guarded region, so its frame and the table that names it are
// written by hand, in the layout of Microsoft's compiler.

extern "C" {

uint32_t DozewellGuardedCall(void (*call)(void* context), void* context);

uint32_t dozewellGuardedCallCode = 0;

// The handler gets no exception record, so the filter keeps the code for it.
LONG DozewellGuardedCallFilter(EXCEPTION_POINTERS* exception, void*) {
  dozewellGuardedCallCode = exception->ExceptionRecord->ExceptionCode;
  return I_RpcExceptionFilter(dozewellGuardedCallCode);
}
}

asm(R"(
    .text
    .globl DozewellGuardedCall
    .seh_proc DozewellGuardedCall
DozewellGuardedCall:
    subq $40, %rsp
    .seh_stackalloc 40
    .seh_endprologue
.LguardedBegin:
    movq %rcx, %rax
    movq %rdx, %rcx
    call *%rax
    nop
.LguardedEnd:
    xorl %eax, %eax
    jmp .LguardedReturn
.LguardedHandler:
    movl dozewellGuardedCallCode(%rip), %eax
.LguardedReturn:
    addq $40, %rsp
    ret
    .seh_handler __C_specific_handler, @except
    .seh_handlerdata
    .long 1
    .rva .LguardedBegin, .LguardedEnd, DozewellGuardedCallFilter, .LguardedHandler
    .text
    .seh_endproc
)");

namespace dozewell::ctl {

uint32_t GuardedCall(void (*call)(void* context), void* context) {
  return DozewellGuardedCall(call, context);
}

}  // namespace dozewell::ctl

#endif
