# Pixels are the product: every build type and machine computes the same bytes. A contracted
# multiply-add would round once where the others round twice. That nobody reads errno or floating
# point traps changes no value and lets square roots and selects be inlined.
function(brisel_keep_bytes target)
  if(NOT PROJECT_IS_TOP_LEVEL)  # whose other parts may be built with fast math
    target_compile_options(${target} PRIVATE -fno-fast-math)
  endif()
  target_compile_options(${target} PRIVATE
    -ffp-contract=off -fno-math-errno -fno-trapping-math)
  if(WIN32 AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # This system aligns the stack to 16 bytes, yet the compiler moves wider vectors there with
    # aligned instructions: these become unaligned ones.
    target_compile_options(${target} PRIVATE -Wa,-muse-unaligned-vector-move)
  endif()
endfunction()

# Gives TARGET an include root of its own, in which there is nothing but this folder, as PREFIX:
# a file includes "PREFIX/header.h" of the targets it links, and a look into any other folder does
# not compile. The root is a link in the build folder, so that folders stay as they are. Other
# projects know brisel_NAME as brisel::NAME, installed or as a part of them.
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
  else()
    brisel_keep_bytes(${target})
  endif()
  target_compile_features(${target} ${scope} cxx_std_20)
  target_include_directories(${target} ${scope}
    $<BUILD_INTERFACE:${root}> $<INSTALL_INTERFACE:include/brisel>)
  string(REPLACE "brisel_" "" name ${target})
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${name})
  add_library(brisel::${name} ALIAS ${target})
endfunction()

# The lint reads the files of a folder of TARGET as one, with the same options.
function(brisel_unite_folders target)
  if(NOT CMAKE_UNITY_BUILD)
    return()
  endif()
  set_target_properties(${target} PROPERTIES UNITY_BUILD_MODE GROUP)
  get_target_property(sources ${target} SOURCES)
  foreach(source IN LISTS sources)
    get_filename_component(folder ${source} DIRECTORY)
    set_property(SOURCE ${source} PROPERTY UNITY_GROUP ${folder})
    set_property(SOURCE ${source} PROPERTY COMPILE_OPTIONS)
  endforeach()
endfunction()
