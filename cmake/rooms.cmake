# The name of a source tells its kind: x_test.cpp holds tests, x_windows.cpp and x_posix.cpp are leaf
# sources for one system, all others are plain.
if(WIN32)
  set(DOZEWELL_SYSTEM windows)
else()
  set(DOZEWELL_SYSTEM posix)
endif()

# room_sources(VARIABLE KIND FOLDER...): the sources of a kind in some folders. PLAIN: no tests, no
# leaves; LEAF: this system's leaves; TEST: tests of plain sources; LEAF_TEST: tests of this
# system's leaves.
function(room_sources variable kind)
  set(found "")
  foreach(folder IN LISTS ARGN)
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${folder}/*.cpp)
    list(APPEND found ${sources})
  endforeach()
  set(leaf "_(windows|posix)\\.cpp$")
  set(leaf_test "_(windows|posix)_test\\.cpp$")
  if(kind STREQUAL "PLAIN")
    list(FILTER found EXCLUDE REGEX "_test\\.cpp$")
    list(FILTER found EXCLUDE REGEX ${leaf})
  elseif(kind STREQUAL "LEAF")
    list(FILTER found INCLUDE REGEX "_${DOZEWELL_SYSTEM}\\.cpp$")
  elseif(kind STREQUAL "TEST")
    list(FILTER found INCLUDE REGEX "_test\\.cpp$")
    list(FILTER found EXCLUDE REGEX ${leaf_test})
  elseif(kind STREQUAL "LEAF_TEST")
    list(FILTER found INCLUDE REGEX "_${DOZEWELL_SYSTEM}_test\\.cpp$")
  else()
    message(FATAL_ERROR "room_sources: no kind ${kind}")
  endif()
  set(${variable} ${found} PARENT_SCOPE)
endfunction()

# unite(TARGET): compiles the target's sources in one folder as one, so that the headers they share
# are read once. The names in their unnamed namespaces must differ, then. A program that calls one
# function of a united library links all of it, and needs the leaves that all of it calls.
function(unite target)
  get_target_property(sources ${target} SOURCES)
  foreach(source IN LISTS sources)
    cmake_path(ABSOLUTE_PATH source OUTPUT_VARIABLE folder)
    cmake_path(GET folder PARENT_PATH folder)
    cmake_path(RELATIVE_PATH folder BASE_DIRECTORY ${CMAKE_SOURCE_DIR})
    string(MAKE_C_IDENTIFIER ${folder} unit)
    set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${unit})
  endforeach()
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
endfunction()

# link_as_one(NAME LIBRARY...): an interface library for libraries that call each other.
function(link_as_one name)
  add_library(${name} INTERFACE)
  if(MSVC)
    # Its linker searches all libraries again by itself, and CMake knows no option for that.
    target_link_libraries(${name} INTERFACE ${ARGN})
  else()
    string(JOIN "," libraries ${ARGN})
    target_link_libraries(${name} INTERFACE $<LINK_GROUP:RESCAN,${libraries}>)
  endif()
endfunction()

# read_common_headers_once(TARGET): precompiles the standard headers that most sources include. The
# presets without this show that each source includes what it needs.
function(read_common_headers_once target)
  precompile(${target} algorithm cstddef cstdint functional limits memory optional stdexcept string
             string_view utility vector)
endfunction()

# precompile(TARGET HEADER...): for the target's sources in C++, not for those in C.
function(precompile target)
  foreach(header IN LISTS ARGN)
    target_precompile_headers(${target} PRIVATE
                              "$<$<COMPILE_LANGUAGE:CXX>:<${header}$<ANGLE-R>>")
  endforeach()
endfunction()

# read_system_headers_once(TARGET): the same for leaf sources, with the header of the system that most
# of them include.
function(read_system_headers_once target)
  read_common_headers_once(${target})
  if(WIN32)
    precompile(${target} windows.h)
  endif()
endfunction()

# build_quickly(TARGET): does not optimize the target's own sources, and leaves debug information out
# of programs for Windows, which would be giants with it. For tests: they spend their time in the
# code that they test.
function(build_quickly target)
  target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:$<IF:$<BOOL:${MSVC}>,/Od,-O0>>
                         $<$<BOOL:${MINGW}>:-g0>)
endfunction()

# build_small(TARGET): for code that reads words and writes text: small rather than fast, which also
# takes the compiler less time. The builds with sanitizers do not optimize it at all.
function(build_small target)
  if(NOT MSVC)
    target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-Os>
                           $<$<CONFIG:RelWithDebInfo>:-O0>)
  endif()
endfunction()

# header_library(NAME HEADER): an interface library for a header-only library that is installed on
# the build machine. A cross build must not see the build machine's other headers, so the library is
# included through a folder that holds nothing else.
function(header_library name header)
  get_filename_component(folder ${header} DIRECTORY)
  find_path(${name}_headers ${header} PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  set(private ${CMAKE_BINARY_DIR}/headers/${name})
  file(MAKE_DIRECTORY ${private})
  file(CREATE_LINK ${${name}_headers}/${folder} ${private}/${folder} SYMBOLIC COPY_ON_ERROR)
  add_library(${name} INTERFACE)
  target_include_directories(${name} SYSTEM INTERFACE ${private})
endfunction()
