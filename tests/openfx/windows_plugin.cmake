# Fails unless the plug-in exports what hosts look for and nothing else, and asks for no library but
# Windows' own.
include(${CMAKE_CURRENT_LIST_DIR}/../support/windows_library.cmake)
check_windows_library(${PLUGIN} "OfxGetNumberOfPlugins;OfxGetPlugin" "KERNEL32.dll;msvcrt.dll")
