# The Debian packages: cpack -G DEB, with CMake 3.19 or newer. One for a device, with whatever is installed without
# naming a component, and with PEBBLETON_THEME one for the desktop of a theme's author.
set(CPACK_PACKAGE_VENDOR "The Pebbleton authors")
set(CPACK_PACKAGE_CONTACT "The Pebbleton authors <pebbleton@example.org>" CACHE STRING
    "Maintainer that the package names: whoever builds it")

# The theme's path is absolute, so the files are gathered by way of DESTDIR.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)

# The first line of each description is that package's summary; any other text here would go before it.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${CMAKE_PROJECT_NAME} built using CMake")
set(CPACK_COMPONENTS_ALL pebbleton)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)

# The image providers are loaded while running, so no binary names them. Without them no PNG can be read.
if(DIRECTFB_VERSION VERSION_LESS 2)
    set(directfbPackages libdirectfb-extra)
else()
    # It may lie where only pkg-config finds it, and in no package.
    set(directfbPackages "")
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${DIRECTFB_LIBDIR})
endif()
set(PEBBLETON_DIRECTFB_PACKAGES "${directfbPackages}" CACHE STRING
    "What the packages depend on for DirectFB, beside what its libraries stand for: a list with commas, or nothing")

set(CPACK_DEBIAN_PEBBLETON_PACKAGE_NAME pebbleton)
set(CPACK_DEBIAN_PEBBLETON_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PEBBLETON_PACKAGE_DEPENDS ${PEBBLETON_DIRECTFB_PACKAGES})
set(CPACK_DEBIAN_PEBBLETON_PACKAGE_RECOMMENDS "kbd, kmod") # the unit's chvt, and modprobe
# DirectFB's settings for the menu, where those are in /etc: a DirectFB2 elsewhere reads them in a folder of its own.
set(PEBBLETON_DIRECTFB_SETTINGS "")
if(DIRECTFB_PREFIX STREQUAL "/usr")
    set(PEBBLETON_DIRECTFB_SETTINGS ${CMAKE_CURRENT_SOURCE_DIR}/examples/directfbrc)
    if(DIRECTFB_VERSION VERSION_GREATER_EQUAL 2)
        string(APPEND PEBBLETON_DIRECTFB_SETTINGS -directfb2)
    endif()
    file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/conffiles "/etc/directfbrc.pebbleton\n")
    set(CPACK_DEBIAN_PEBBLETON_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_BINARY_DIR}/conffiles)
    set(CPACK_DEBIAN_PEBBLETON_PACKAGE_CONTROL_STRICT_PERMISSION TRUE)
endif()
set(CPACK_DEBIAN_PEBBLETON_DESCRIPTION
    "full-screen touch menu for embedded Linux
Pebbleton shows a picture on a device's touch screen, lets the user touch one
of the buttons on it, and ends. The exit status says which button it was, and
whatever started it acts on that.

It draws through DirectFB and needs no window system. Where the buttons lie
and what they look like comes from a theme: a short text file and two pictures.")

if(PEBBLETON_THEME)
    list(APPEND CPACK_COMPONENTS_ALL pebbleton-theme)
    set(CPACK_DEBIAN_PEBBLETON-THEME_PACKAGE_NAME pebbleton-theme)
    set(CPACK_DEBIAN_PEBBLETON-THEME_PACKAGE_SECTION misc)
    set(CPACK_DEBIAN_PEBBLETON-THEME_PACKAGE_DEPENDS ${PEBBLETON_DIRECTFB_PACKAGES})
    # The theme guide, and what makes skins with a palette; with DirectFB 1.7 also what makes them in its own form, and
    # the window in which the menu is tried.
    set(CPACK_DEBIAN_PEBBLETON-THEME_PACKAGE_RECOMMENDS "pebbleton, pngquant")
    set(trial "")
    if(DIRECTFB_VERSION VERSION_LESS 2)
        string(APPEND CPACK_DEBIAN_PEBBLETON-THEME_PACKAGE_RECOMMENDS ", libdirectfb-bin, xserver-xephyr")
        set(trial "\n\nIt also runs the menu itself in a window of the desktop.")
    endif()
    set(CPACK_DEBIAN_PEBBLETON-THEME_DESCRIPTION
        "makes, checks and previews themes of the Pebbleton touch menu
A theme says what the touch menu of a device looks like: a short text file and
two pictures. This tool makes all three of one SVG drawing, names each mistake
in a theme before a device does, draws the screen with its buttons, and makes a
page in which the menu can be pressed in any browser.${trial}")
endif()

# What lintian --pedantic still says of it:
# - initial-upload-closes-no-bugs: the package is not for Debian's own archive.
# - image-file-in-usr-lib: the skins must lie beside the theme file, whose path is part of the program.
set(PEBBLETON_DEBIAN_VERSION ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
configure_file(cmake/DebianFiles.cmake.in DebianFiles.cmake @ONLY)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_BINARY_DIR}/DebianFiles.cmake)
include(CPack)
