# How this project builds itself: warnings, sanitizers, folders, tests.
enable_language(ASM)
if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release)
endif()
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

add_compile_options(-Wall -Wextra -Wconversion -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  add_compile_options(-Wno-restrict)  # false alarms inside std::string at -O3
elseif(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  add_compile_options(-Wno-sign-conversion)  # which -Wconversion does not mean elsewhere
endif()
if(BRISEL_SANITIZE)
  add_compile_options(-fsanitize=${BRISEL_SANITIZE} -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${BRISEL_SANITIZE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(-Wno-maybe-uninitialized)  # false alarms inside std::regex
  endif()
endif()
if(WIN32)
  add_link_options(-static)  # the module asks for no library but Windows' own
endif()
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME program)  # of what is installed; the others are named
enable_testing()
