# The Debian package: cpack -G DEB, with CMake 3.19 or newer.
set(CPACK_PACKAGE_VENDOR "The Pebbleton authors")
set(CPACK_PACKAGE_CONTACT "The Pebbleton authors <pebbleton@example.org>" CACHE STRING
    "Maintainer that the package names: whoever builds it")

# The theme's path is absolute, so the files are gathered by way of DESTDIR.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The image providers are loaded while running, so no binary names them. Without them no PNG can be read.
set(CPACK_DEBIAN_PACKAGE_DEPENDS libdirectfb-extra)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "full-screen touch menu for embedded Linux")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Pebbleton shows a picture on a device's touch screen, lets the user touch one
of the buttons on it, and ends. The exit status says which button it was, and
whatever started it acts on that.

It draws through DirectFB and needs no window system. Where the buttons lie
and what they look like comes from a theme: a short text file and two pictures.")

# What lintian --pedantic still says of it:
# - initial-upload-closes-no-bugs: the package is not for Debian's own archive.
# - image-file-in-usr-lib: the skins must lie beside the theme file, whose path is part of the program.
set(PEBBLETON_DEBIAN_VERSION ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
configure_file(cmake/DebianFiles.cmake.in DebianFiles.cmake @ONLY)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_BINARY_DIR}/DebianFiles.cmake)
include(CPack)
