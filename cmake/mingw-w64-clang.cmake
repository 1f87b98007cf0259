# clang and lld, with the headers and libraries of mingw-w64 and of the GCC that is built for it.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(target x86_64-w64-mingw32)
foreach(language C CXX)
  set(CMAKE_${language}_COMPILER_TARGET ${target})
endforeach()
set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
# The others of these tools come with GCC for this target, and do not care which compiler it was.
foreach(tool AR RANLIB NM OBJDUMP)
  string(TOLOWER ${tool} name)
  find_program(CMAKE_${tool} ${target}-${name} REQUIRED)
endforeach()
set(CMAKE_RC_COMPILER ${target}-windres)

# Without a root of its own clang also reads the headers of the build machine.
set(CMAKE_SYSROOT /usr/${target})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)

# clang takes a GCC's folder only if its name is a number, and Debian's ends with the thread model.
execute_process(COMMAND ${target}-g++ -print-libgcc-file-name OUTPUT_VARIABLE gcc
                OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
cmake_path(GET gcc PARENT_PATH gcc)
set(CMAKE_CXX_STANDARD_INCLUDE_DIRECTORIES ${gcc}/include/c++ ${gcc}/include/c++/${target})
# GCC knows by itself that its library compares types in a function that is not inline.
set(CMAKE_CXX_FLAGS_INIT -D__GXX_TYPEINFO_EQUALITY_INLINE=0)
foreach(kind EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-fuse-ld=lld -B${gcc} -L${gcc}")
endforeach()
