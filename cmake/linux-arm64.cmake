# 64-bit ARM Linux, built with Debian's cross compiler, or with clang on its libraries, and run by
# qemu.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)

set(target aarch64-linux-gnu)
if(NOT CMAKE_CXX_COMPILER)
  set(CMAKE_CXX_COMPILER ${target}-g++)
  set(CMAKE_ASM_COMPILER ${target}-gcc)
endif()
foreach(language CXX ASM)
  set(CMAKE_${language}_COMPILER_TARGET ${target})  # heeded by clang
endforeach()

set(CMAKE_FIND_ROOT_PATH /usr/${target})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64 -L /usr/${target})
