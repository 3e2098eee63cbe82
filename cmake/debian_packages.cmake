# Read by CPack for each generator: for DEB, a package for each component.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
  return()
endif()

list(GET CPACK_INSTALL_CMAKE_PROJECTS 0 build)
set(CPACK_INSTALL_CMAKE_PROJECTS ${build} brisel ALL /)
set(CPACK_COMPONENTS_ALL program frei0r openfx development)
if(CPACK_BRISEL_PREVIEW)
  list(APPEND CPACK_COMPONENTS_ALL preview)
endif()
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/debian_layout.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/debian_finish.cmake)

set(changelog ${CMAKE_CURRENT_LIST_DIR}/../docs/package/debian_changelog)
file(STRINGS ${changelog} newest LIMIT_COUNT 1)
if(NOT newest MATCHES "^brisel \\(${CPACK_PACKAGE_VERSION}\\)")
  message(FATAL_ERROR "${changelog} begins with \"${newest}\", and the project has the version "
    "${CPACK_PACKAGE_VERSION}: add an entry")
endif()

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE brisel)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "Brisel maintainers <maintainers@brisel.invalid>")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)

set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME brisel)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_DEPENDS ffmpeg)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SUGGESTS "brisel-preview, frei0r-brisel, parallel, slurm-client")
set(CPACK_DEBIAN_PROGRAM_DESCRIPTION [[
star particles on stills and clips
Brisel draws stars on footage: an emitter (a point, a line, a curve, a circle,
a mask, the brightness or the outline of the picture) releases small lights
that fly, drift in the wind, swing, fade, burst and flash.

This package has the command line, which renders scenes in TOML to frames and
clips, the effect module that it loads, the presets, the manual and example
scenes.]])

set(CPACK_DEBIAN_FREI0R_PACKAGE_NAME frei0r-brisel)
set(CPACK_DEBIAN_FREI0R_PACKAGE_SECTION video)
set(CPACK_DEBIAN_FREI0R_PACKAGE_SUGGESTS brisel)
set(CPACK_DEBIAN_FREI0R_PACKAGE_ENHANCES
  "ffmpeg, flowblade, gstreamer1.0-plugins-bad, kdenlive, melt")
set(CPACK_DEBIAN_FREI0R_DESCRIPTION [[
star particles as a frei0r video filter
Brisel draws stars on footage: an emitter (a point, a line, a curve, a circle,
a mask, the brightness or the outline of the picture) releases small lights
that fly, drift in the wind, swing, fade, burst and flash.

This package has the effect as a filter for ffmpeg, Kdenlive, melt, Flowblade
and GStreamer, and what tells Kdenlive and MLT its parameters and looks.]])

set(CPACK_DEBIAN_OPENFX_PACKAGE_NAME openfx-brisel)
set(CPACK_DEBIAN_OPENFX_PACKAGE_SECTION video)
set(CPACK_DEBIAN_OPENFX_PACKAGE_SUGGESTS brisel)
set(CPACK_DEBIAN_OPENFX_DESCRIPTION [[
star particles as an OpenFX plug-in
Brisel draws stars on footage: an emitter (a point, a line, a curve, a circle,
a mask, the brightness or the outline of the picture) releases small lights
that fly, drift in the wind, swing, fade, burst and flash.

This package has the effect as a plug-in for compositing programs and editors
that load OpenFX plug-ins from /usr/OFX/Plugins, presets included.]])

set(CPACK_DEBIAN_PREVIEW_PACKAGE_NAME brisel-preview)
set(CPACK_DEBIAN_PREVIEW_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PREVIEW_PACKAGE_DEPENDS "brisel (= ${CPACK_PACKAGE_VERSION}), ffmpeg")
set(CPACK_DEBIAN_PREVIEW_DESCRIPTION [[
star particles in a window, while their values are turned
Brisel draws stars on footage: an emitter (a point, a line, a curve, a circle,
a mask, the brightness or the outline of the picture) releases small lights
that fly, drift in the wind, swing, fade, burst and flash.

This package has a window that shows a scene over a clip, with the effect's
controls, masks and points drawn on the picture, and a timeline with keys.]])

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libbrisel-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION [[
star particles for programs of one's own (development files)
Brisel draws stars on footage: an emitter (a point, a line, a curve, a circle,
a mask, the brightness or the outline of the picture) releases small lights
that fly, drift in the wind, swing, fade, burst and flash.

This package has the effect as a static C++ library without a host, with its
headers and what find_package(brisel) of CMake needs.]])
