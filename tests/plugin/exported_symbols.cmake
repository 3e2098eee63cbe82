# Fails unless the module's dynamic symbol table defines EntryPointFunc and nothing else.
execute_process(COMMAND ${NM} --dynamic --defined-only --format=posix ${MODULE}
                OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "(^|\n)[^ \n]+" symbols "${listing}")
list(TRANSFORM symbols STRIP)
if(NOT symbols STREQUAL "EntryPointFunc")
  message(FATAL_ERROR "${MODULE} exports ${symbols}")
endif()
