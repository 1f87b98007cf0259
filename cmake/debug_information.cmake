# put_debug_information_apart(TARGET): leaves a program x.exe without debug information, which is in a
# file beside it: x.debug in GCC's format, or x.pdb in the one that debuggers for Windows read.
function(put_debug_information_apart target)
  set_target_properties(${target} PROPERTIES DEBUG_INFORMATION_APART ON)
  if(MSVC)
    target_link_options(${target} PRIVATE /DEBUG /OPT:REF /OPT:ICF)
  elseif(MINGW AND CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    # The program names the file without the folder, which is another one on each build machine.
    target_link_options(${target} PRIVATE -Wl,--pdb= -Wl,--Xlink=-pdbaltpath:%_PDB%)
  elseif(MINGW)
    set(program $<TARGET_FILE:${target}>)
    add_custom_command(TARGET ${target} POST_BUILD
                       COMMAND ${CMAKE_OBJCOPY} --only-keep-debug ${program}
                               $<TARGET_FILE_DIR:${target}>/${target}.debug
                       COMMAND ${CMAKE_STRIP} ${program}
                       VERBATIM)
  endif()
endfunction()
