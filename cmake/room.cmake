# Gives TARGET an include root of its own, in which there is nothing but this folder, as PREFIX:
# a file includes "PREFIX/header.h" of the targets it links, and a look into any other folder does
# not compile. The root is a link in the build folder, so that folders stay as they are.
function(brisel_room target prefix)
  set(root ${PROJECT_BINARY_DIR}/rooms/${target})
  get_filename_component(above ${root}/${prefix} DIRECTORY)
  file(MAKE_DIRECTORY ${above})
  if(NOT EXISTS ${root}/${prefix})
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${root}/${prefix} SYMBOLIC)
  endif()
  get_target_property(type ${target} TYPE)
  set(scope PUBLIC)
  if(type STREQUAL "INTERFACE_LIBRARY")
    set(scope INTERFACE)
  endif()
  target_include_directories(${target} ${scope} $<BUILD_INTERFACE:${root}>)
endfunction()
