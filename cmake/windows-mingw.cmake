# 64-bit Windows, built with Debian's mingw-w64, or with clang on its libraries, and run with Wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

# The compilers with the standard library's threads.
set(target x86_64-w64-mingw32)
if(CMAKE_CXX_COMPILER MATCHES "clang")
  # It does not find this library by itself, nor knows how it keeps a thread's variables, and warns of
  # a definition that exports what was declared before.
  execute_process(COMMAND ${target}-g++-posix -print-libgcc-file-name
    OUTPUT_VARIABLE libraries OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  get_filename_component(libraries ${libraries} DIRECTORY)
  set(headers ${libraries}/include/c++)
  set(CMAKE_C_COMPILER clang)
  set(CMAKE_C_COMPILER_TARGET ${target})
  set(CMAKE_CXX_COMPILER_TARGET ${target})
  set(CMAKE_CXX_FLAGS_INIT
    "-nostdinc++ -isystem ${headers} -isystem ${headers}/${target} -femulated-tls -pthread"
    "-Wno-dll-attribute-on-redeclaration")
  list(JOIN CMAKE_CXX_FLAGS_INIT " " CMAKE_CXX_FLAGS_INIT)
  foreach(kind EXE MODULE SHARED)
    set(CMAKE_${kind}_LINKER_FLAGS_INIT -L${libraries})
  endforeach()
else()
  set(CMAKE_C_COMPILER ${target}-gcc-posix)
  set(CMAKE_CXX_COMPILER ${target}-g++-posix)
endif()
set(CMAKE_RC_COMPILER ${target}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${target})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# A Windows of its own in the build folder, unless another is there to be used; nothing that a page
# viewer or .NET would be needed for.
if(DEFINED ENV{WINEPREFIX})
  set(prefix $ENV{WINEPREFIX})
else()
  set(prefix ${CMAKE_BINARY_DIR}/wine)
endif()
set(CMAKE_CROSSCOMPILING_EMULATOR
    ${CMAKE_COMMAND} -E env WINEPREFIX=${prefix} WINEDEBUG=-all
    "WINEDLLOVERRIDES=mscoree,mshtml=" wine)
