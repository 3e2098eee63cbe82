# Fails unless the dynamic symbol table of MODULE defines EXPORTS, in the alphabet's order, and nothing
# else.
execute_process(COMMAND ${NM} --dynamic --defined-only --format=posix ${MODULE}
                OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "(^|\n)[^ \n]+" symbols "${listing}")
list(TRANSFORM symbols STRIP)
if(NOT symbols STREQUAL EXPORTS)
  message(FATAL_ERROR "${MODULE} exports ${symbols}")
endif()
