# What cpack makes of the installed files: a ZIP for Windows, a Debian package elsewhere.
set(CPACK_PACKAGE_NAME krv)
set(CPACK_PACKAGE_VENDOR "krvAudioVisualPlugin developers")
set(CPACK_PACKAGE_CONTACT "krvAudioVisualPlugin developers <krv@example.org>")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR})
set(CPACK_VERBATIM_VARIABLES ON)

if(WIN32)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_PACKAGE_FILE_NAME krvAudioVisualPlugin-${PROJECT_VERSION}-windows-x64)
else()
  set(CPACK_GENERATOR DEB)
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
  set(CPACK_STRIP_FILES ON)
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_PACKAGE_RELEASE 0krv1)  # below what Debian itself would count from 1
  set(CPACK_DEBIAN_PACKAGE_SECTION video)
  set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Draws bars, lines, rings, halos and outlines of people that follow the music
over video, with OpenGL shaders.
.
The package holds the plug-in for video editors, effect packages for it, and
the program krv, which renders video and sound files with them without an
editor or a display, and lets one work on effects in a window.")
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  # Loaded at run time: OpenGL by the window's library, and drivers, of which one needs no graphics
  # card.
  set(CPACK_DEBIAN_PACKAGE_DEPENDS "libgl1, libgl1-mesa-dri")
  set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-inter, xdg-utils")
  set(CPACK_KRV_CHANGELOG ${CMAKE_SOURCE_DIR}/packaging/debian/changelog.in)
  set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_SOURCE_DIR}/cmake/DebianFiles.cmake)
endif()
include(CPack)
