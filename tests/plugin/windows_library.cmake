# Fails unless the module is a library that Windows loads as it stands: exports EntryPointFunc and
# nothing else, asks for no library but Windows' own, and holds the resources.
set(extracted ${WORK_FOLDER}/extracted_resource)
function(extract_resource type name)
  file(REMOVE ${extracted})
  execute_process(COMMAND ${WRESTOOL} -x --type=${type} --name=${name} ${ARGN} -o ${extracted} ${MODULE}
                  COMMAND_ERROR_IS_FATAL ANY)
endfunction()

include(${CMAKE_CURRENT_LIST_DIR}/../support/windows_library.cmake)
check_windows_library(${MODULE} EntryPointFunc "KERNEL32.dll;SHELL32.dll;msvcrt.dll;ole32.dll")

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
  extract_resource(2 ${CMAKE_MATCH_1})
  execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${extracted} ${RESOURCES}/${CMAKE_MATCH_2}
                  RESULT_VARIABLE differs)
  if(differs)
    message(SEND_ERROR "bitmap ${CMAKE_MATCH_1} is not ${CMAKE_MATCH_2}")
  endif()
endforeach()

# The property list, byte by byte: each property is "8BIM", its key, a zero and the length of its
# value, with characters of four-character codes in reverse.
set(property_list
  0100 00000000 0c000000
  # kind "eFKT"
  4d494238 646e696b 00000000 04000000 544b4665
  # name "Corvane - Brisel"
  4d494238 656d616e 00000000 14000000 10436f7276616e65202d2042726973656c000000
  # catg "Tessaro"
  4d494238 67746163 00000000 08000000 075465737361726f
  # 8664 "EntryPointFunc"
  4d494238 34363638 00000000 10000000 456e747279506f696e7446756e630000
  # ePVR 2.0: two words, major first
  4d494238 52565065 00000000 04000000 02000000
  # eSVR 13.2
  4d494238 52565365 00000000 04000000 0d000200
  # eVER 0x00100001
  4d494238 52455665 00000000 04000000 01001000
  # eINF 0
  4d494238 464e4965 00000000 04000000 00000000
  # eGLO 0x06008454
  4d494238 4f4c4765 00000000 04000000 54840006
  # eGL2 8
  4d494238 324c4765 00000000 04000000 08000000
  # eMNA "Vellix (Drizzen)"
  4d494238 414e4d65 00000000 14000000 1056656c6c697820284472697a7a656e29000000
  # aeFL 0
  4d494238 4c466561 00000000 04000000 00000000)
string(JOIN "" property_list ${property_list})
extract_resource(PIPL 16000 --raw)
file(READ ${extracted} bytes HEX)
if(NOT bytes STREQUAL property_list)
  message(SEND_ERROR "property list: ${bytes}\nexpected: ${property_list}")
endif()

# The version that the file's properties show: as four words behind a signature, and as text.
extract_resource(16 1 --raw)
file(READ ${extracted} bytes HEX)
string(REPLACE "." ";" numbers ${VERSION})
foreach(number IN LISTS numbers)
  math(EXPR number "256 + ${number}" OUTPUT_FORMAT HEXADECIMAL)
  string(SUBSTRING ${number} 3 2 number)
  list(APPEND words ${number}00)
endforeach()
list(GET words 0 major)
list(GET words 1 minor)
list(GET words 2 patch)
if(NOT bytes MATCHES "^....34000000.*bd04effe00000100${minor}${major}0000${patch}")
  message(SEND_ERROR "not of version ${VERSION}: ${bytes}")
endif()
foreach(text "FileVersion" "ProductVersion" "${VERSION}" "OriginalFilename" "VellixDrizzen_64.AEX")
  string(HEX "${text}" text_bytes)
  string(REGEX REPLACE "(..)" "\\100" text_bytes ${text_bytes})
  if(NOT bytes MATCHES ${text_bytes}0000)
    message(SEND_ERROR "version resource without ${text}")
  endif()
endforeach()
