# SPDX-License-Identifier: GPL-3.0-or-later
# How our own code is compiled: warnings are errors, in every preset.
find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE_PROGRAM})
endif()

add_library(kivandra_options INTERFACE)
target_compile_options(kivandra_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
target_include_directories(kivandra_options INTERFACE ${PROJECT_SOURCE_DIR}/src ${CMAKE_BINARY_DIR}/generated)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # GCC 12 reports these in its own standard library at -O2 and under sanitizers; clang checks the same code.
  target_compile_options(kivandra_options INTERFACE -Wno-restrict -Wno-maybe-uninitialized -Wno-array-bounds
                         -Wno-stringop-overflow)
endif()

# What is shipped is hardened, and made of nothing but its sources: no path of the machine that built it. The lines of the
# code, for a crash report, go into the package of debugging symbols.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  string(APPEND CMAKE_CXX_FLAGS_RELEASE " -g1 -ffile-prefix-map=${PROJECT_SOURCE_DIR}=."
         " -fPIC -fno-semantic-interposition -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2"
         " -fstack-protector-strong -fstack-clash-protection -Wformat -Werror=format-security")
  if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64|i[3-6]86")
    string(APPEND CMAKE_CXX_FLAGS_RELEASE " -fcf-protection")
  endif()
  string(APPEND CMAKE_EXE_LINKER_FLAGS_RELEASE " -pie -Wl,-z,relro,-z,now,--as-needed")
endif()

if(KIVANDRA_SANITIZERS)
  add_compile_options(-fsanitize=${KIVANDRA_SANITIZERS} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${KIVANDRA_SANITIZERS})
endif()

# One static library a room: every source of its folder, linked to the floors below it.
function(kivandra_room name)
  cmake_parse_arguments(ROOM "" "" "LINKS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  if(sources)
    add_library(kv_${name} STATIC ${sources})
    target_link_libraries(kv_${name} PUBLIC kivandra_options ${ROOM_LINKS})
  else()
    add_library(kv_${name} INTERFACE)
    target_link_libraries(kv_${name} INTERFACE kivandra_options ${ROOM_LINKS})
  endif()
endfunction()
