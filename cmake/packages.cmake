# What users install: on Windows a folder for the host's plug-ins, elsewhere the command line and the
# frei0r filter, with the presets and the manual beside the module in both.
if(WIN32)
  set(module_folder Brisel)
  set(readme_folder Brisel)
  set(readme docs/package/windows.txt)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY OFF)
  set(CPACK_SYSTEM_NAME windows-x64)
else()
  set(module_folder lib/brisel)
  set(readme_folder share/doc/brisel)
  set(readme docs/package/linux.txt)
  set(CPACK_GENERATOR TGZ)
  set(CPACK_SYSTEM_NAME linux-x64)
endif()
install(TARGETS brisel_module LIBRARY DESTINATION ${module_folder})
install(DIRECTORY library/Corvane DESTINATION ${module_folder})
install(FILES ${readme} DESTINATION ${readme_folder} RENAME README.txt COMPONENT archive)
if(NOT WIN32)
  install(DIRECTORY examples DESTINATION share/doc/brisel
    FILES_MATCHING REGEX "\\.(toml|jpg|png|svg|mp4)$")
  install(FILES docs/farm.md docs/scene.md docs/package/copyright DESTINATION share/doc/brisel)
  install(TARGETS brisel_filter LIBRARY DESTINATION lib/frei0r-1 COMPONENT frei0r)
  file(GLOB host_pictures CONFIGURE_DEPENDS docs/hosts_*.jpg)
  install(FILES docs/hosts.md ${host_pictures} docs/scene.md docs/package/copyright
    DESTINATION share/doc/frei0r-brisel COMPONENT frei0r)
endif()

# For those who build with the effect: its library with the rooms below it, which
# find_package(brisel) finds as brisel::effect, and its headers with those that they include.
set(rooms core platform contour engine render presets effect)
set(config lib/cmake/brisel)
list(TRANSFORM rooms PREPEND brisel_ OUTPUT_VARIABLE libraries)
install(TARGETS ${libraries} EXPORT brisel ARCHIVE DESTINATION lib COMPONENT development)
install(EXPORT brisel DESTINATION ${config} NAMESPACE brisel:: FILE brisel-targets.cmake
  COMPONENT development)
set(config_file ${PROJECT_BINARY_DIR}/brisel-config.cmake)
file(CONFIGURE OUTPUT ${config_file} CONTENT
"include(CMakeFindDependencyMacro)
find_dependency(Threads)
include(\${CMAKE_CURRENT_LIST_DIR}/brisel-targets.cmake)
" @ONLY)
foreach(room core engine render presets effect)
  install(DIRECTORY src/${room} DESTINATION include/brisel COMPONENT development
    FILES_MATCHING PATTERN "*.h" PATTERN simd EXCLUDE)
endforeach()
include(CMakePackageConfigHelpers)
set(version_file ${PROJECT_BINARY_DIR}/brisel-config-version.cmake)
write_basic_package_version_file(${version_file} COMPATIBILITY SameMajorVersion)
install(FILES ${config_file} ${version_file} DESTINATION ${config} COMPONENT development)

set(CPACK_PACKAGE_NAME brisel)
set(CPACK_STRIP_FILES ON)
foreach(component program frei0r archive)
  list(APPEND CPACK_INSTALL_CMAKE_PROJECTS ${CMAKE_BINARY_DIR} brisel ${component} /)
endforeach()
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/cmake/debian_packages.cmake)
include(CPack)
