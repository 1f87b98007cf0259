# put_debug_information_apart(TARGET): moves the debug information out of a program x.exe into x.debug
# beside it. Does nothing with compilers that write it into a file of its own.
function(put_debug_information_apart target)
  if(MINGW)
    set_target_properties(${target} PROPERTIES DEBUG_INFORMATION_APART ON)
    set(program $<TARGET_FILE:${target}>)
    add_custom_command(TARGET ${target} POST_BUILD
                       COMMAND ${CMAKE_OBJCOPY} --only-keep-debug ${program}
                               $<TARGET_FILE_DIR:${target}>/${target}.debug
                       COMMAND ${CMAKE_STRIP} ${program}
                       VERBATIM)
  endif()
endfunction()
