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

# Adds isa/NAME.cpp to TARGET for each instruction set of the processor. The wide ones are always
# optimized: code that is not inlined there could be taken by the linker for a processor that cannot
# run it. The address sanitizer's checks are calls there, as its inline ones grow such loops beyond
# measure, and undefined behavior is looked for in the same code for the other instruction sets.
function(brisel_instruction_sets target)
  target_sources(${target} PRIVATE isa/plain.cpp)
  if(CMAKE_SYSTEM_PROCESSOR MATCHES "aarch64|arm64")
    target_sources(${target} PRIVATE isa/neon.cpp)
  elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
    target_sources(${target} PRIVATE isa/sse2.cpp)
  endif()
  if(NOT BRISEL_WIDE_KERNELS OR NOT CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
    return()
  endif()
  target_sources(${target} PRIVATE isa/avx2.cpp isa/avx512.cpp)
  target_compile_definitions(${target} PRIVATE BRISEL_WIDE_KERNELS)
  set(wide $<$<NOT:$<CONFIG:RelWithDebInfo>>:-O3>)  # which says -O2
  if(BRISEL_SANITIZE)
    set(calls asan-instrumentation-with-call-threshold=0)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
      set(calls --param=${calls})
    else()
      set(calls -mllvm -${calls})
    endif()
    set(wide -O1 -fno-sanitize=undefined ${calls})
  endif()
  set(avx512 -mavx512f -mavx512bw -mavx512dq -mavx512vl -mprefer-vector-width=512)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # False alarms inside the compiler's own header.
    list(APPEND avx512 -Wno-uninitialized -Wno-maybe-uninitialized)
  endif()
  set_source_files_properties(isa/avx2.cpp PROPERTIES
    COMPILE_OPTIONS "${wide};-mavx2;-mfma;-mbmi2" SKIP_UNITY_BUILD_INCLUSION ON)
  set_source_files_properties(isa/avx512.cpp PROPERTIES
    COMPILE_OPTIONS "${wide};-mbmi2;${avx512}" SKIP_UNITY_BUILD_INCLUSION ON)
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
