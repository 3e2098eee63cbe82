# Fails unless the dynamic symbol table of MODULE defines EXPORTS, in the alphabet's order, and nothing
# else; and, where GLIBC is given, when the module needs a later version of that.
execute_process(COMMAND ${NM} --dynamic --defined-only --format=posix ${MODULE}
                OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "(^|\n)[^ \n]+" symbols "${listing}")
list(TRANSFORM symbols STRIP)
if(NOT symbols STREQUAL EXPORTS)
  message(FATAL_ERROR "${MODULE} exports ${symbols}")
endif()
if(GLIBC)
  execute_process(COMMAND ${NM} --dynamic --undefined-only --with-symbol-versions ${MODULE}
                  OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "[^ \n]+@GLIBC_[0-9.]+" symbols "${listing}")
  if(NOT symbols)
    message(FATAL_ERROR "${MODULE} needs nothing of glibc?")
  endif()
  foreach(symbol IN LISTS symbols)
    string(REGEX REPLACE ".*@GLIBC_" "" version ${symbol})
    if(version VERSION_GREATER GLIBC)
      message(FATAL_ERROR "${MODULE} needs ${symbol}")
    endif()
  endforeach()
endif()
