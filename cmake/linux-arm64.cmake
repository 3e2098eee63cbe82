# 64-bit ARM Linux, built with Debian's cross compiler, or with clang on its libraries, and run by
# qemu.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)

set(target aarch64-linux-gnu)
if(CMAKE_CXX_COMPILER MATCHES "clang")
  set(CMAKE_C_COMPILER clang)
  foreach(language C CXX ASM)
    set(CMAKE_${language}_COMPILER_TARGET ${target})
  endforeach()
else()
  set(CMAKE_C_COMPILER ${target}-gcc)
  set(CMAKE_CXX_COMPILER ${target}-g++)
  set(CMAKE_ASM_COMPILER ${target}-gcc)
endif()

set(CMAKE_FIND_ROOT_PATH /usr/${target})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64 -L /usr/${target})
