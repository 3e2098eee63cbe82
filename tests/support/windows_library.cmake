# For scripts of tests: fails unless the Windows library exports `wanted_exports` and nothing else, and
# asks for no other libraries than `wanted_imports`, both sorted. `OBJDUMP` reads it.
function(check_windows_library library wanted_exports wanted_imports)
  execute_process(COMMAND ${OBJDUMP} -p ${library}
                  OUTPUT_VARIABLE headers COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCH "\\[Ordinal/Name Pointer\\] Table\n([^\n]+\n)*" exports "${headers}")
  string(REGEX MATCHALL "\\[ *[0-9]+\\] [^\n]+" exports "${exports}")
  list(TRANSFORM exports REPLACE "^.*\\] " "")
  if(NOT exports STREQUAL wanted_exports)
    message(SEND_ERROR "exports: ${exports}")
  endif()
  string(REGEX MATCHALL "DLL Name: [^\n]+" imports "${headers}")
  list(TRANSFORM imports REPLACE "DLL Name: " "")
  list(SORT imports)
  if(NOT imports STREQUAL wanted_imports)
    message(SEND_ERROR "asks for ${imports}")
  endif()
endfunction()
