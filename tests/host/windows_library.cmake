# Fails unless the module is a library that Windows loads as it stands: exports EntryPointFunc and
# nothing else, asks for no library but Windows' own, and holds the resources.
execute_process(COMMAND ${OBJDUMP} -p ${MODULE}
                OUTPUT_VARIABLE headers COMMAND_ERROR_IS_FATAL ANY)

string(REGEX MATCH "\\[Ordinal/Name Pointer\\] Table\n([^\n]+\n)*" exports "${headers}")
string(REGEX MATCHALL "\\[ *[0-9]+\\] [^\n]+" exports "${exports}")
list(TRANSFORM exports REPLACE "^.*\\] " "")
if(NOT exports STREQUAL "EntryPointFunc")
  message(SEND_ERROR "exports: ${exports}")
endif()

string(REGEX MATCHALL "DLL Name: [^\n]+" imports "${headers}")
list(TRANSFORM imports REPLACE "DLL Name: " "")
foreach(library IN LISTS imports)
  if(NOT library MATCHES "^(KERNEL32|USER32|GDI32|SHELL32|ole32|msvcrt)\\.dll$")
    message(SEND_ERROR "asks for ${library}")
  endif()
endforeach()

execute_process(COMMAND ${WRESTOOL} --list --type=2 ${MODULE}
                OUTPUT_VARIABLE bitmaps COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "name=[0-9]+" bitmaps "${bitmaps}")
list(TRANSFORM bitmaps REPLACE "name=" "")
if(NOT bitmaps STREQUAL "550;551;553;560;561;563;992;993;994;995;998;999")
  message(SEND_ERROR "bitmaps: ${bitmaps}")
endif()

set(extracted ${WORK_FOLDER}/extracted_property_list.bin)
file(REMOVE ${extracted})
execute_process(COMMAND ${WRESTOOL} -x --raw --type=PIPL --name=16000 -o ${extracted} ${MODULE}
                COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${extracted} ${PROPERTY_LIST}
                RESULT_VARIABLE differs)
if(differs)
  message(SEND_ERROR "the property list is not the one that the module was built with")
endif()
