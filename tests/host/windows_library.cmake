# Fails unless the module is a library that Windows loads as it stands: exports EntryPointFunc and
# nothing else, asks for no library but Windows' own, and holds the resources.
function(expect_resource type name file)
  set(extracted ${WORK_FOLDER}/extracted_resource)
  file(REMOVE ${extracted})
  execute_process(COMMAND ${WRESTOOL} -x --type=${type} --name=${name} ${ARGN} -o ${extracted} ${MODULE}
                  COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${extracted} ${file}
                  RESULT_VARIABLE differs)
  if(differs)
    message(SEND_ERROR "resource ${type} ${name} is not ${file}")
  endif()
endfunction()

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
list(SORT imports)
if(NOT imports STREQUAL "KERNEL32.dll;SHELL32.dll;msvcrt.dll;ole32.dll")
  message(SEND_ERROR "asks for ${imports}")
endif()

execute_process(COMMAND ${WRESTOOL} --list --type=2 ${MODULE}
                OUTPUT_VARIABLE bitmaps COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "name=[0-9]+" bitmaps "${bitmaps}")
list(TRANSFORM bitmaps REPLACE "name=" "")
if(NOT bitmaps STREQUAL "550;551;553;560;561;563;992;993;994;995;998;999")
  message(SEND_ERROR "bitmaps: ${bitmaps}")
endif()
# Each is the file of the list, whose size a unit test pins.
file(STRINGS ${RESOURCES}/bitmap_list.inc entries REGEX "^BITMAP_FILE")
foreach(entry IN LISTS entries)
  string(REGEX MATCH "([0-9]+), \"(.+)\"" entry "${entry}")
  expect_resource(2 ${CMAKE_MATCH_1} ${RESOURCES}/${CMAKE_MATCH_2})
endforeach()
expect_resource(PIPL 16000 ${PROPERTY_LIST} --raw)
