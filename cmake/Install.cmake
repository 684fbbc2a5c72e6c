# What is installed where. Whatever names no component is for a device.
include(GNUInstallDirs)
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME pebbleton)

# The path that the program looks in by default names this folder, so no prefix goes before it.
set(PEBBLETON_INSTALLED_THEME_DIR /usr/lib/quillfen/theme)

install(TARGETS pebbleton RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

if(PEBBLETON_TOUCH)
    install(TARGETS pebbleton-touch RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    install(FILES man/pebbleton-touch.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endif()

set(PEBBLETON_THEME_DIR ${PEBBLETON_INSTALLED_THEME_DIR})
configure_file(theme/main_menu.conf.in installed-theme/main_menu.conf @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/installed-theme/main_menu.conf theme/normal.png theme/pressed.png
    DESTINATION ${PEBBLETON_INSTALLED_THEME_DIR})

install(FILES man/pebbleton.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES man/pebbleton-theme.5 DESTINATION ${CMAKE_INSTALL_MANDIR}/man5)

# As they lie in the source tree, so that the links between them hold.
install(FILES README.md CHANGELOG.md CONTRIBUTING.md LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs examples DESTINATION ${CMAKE_INSTALL_DOCDIR} PATTERN pebbleton-launcher EXCLUDE
    PATTERN pebbleton-sleep EXCLUDE)
install(PROGRAMS examples/pebbleton-launcher examples/pebbleton-sleep DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples)

if(PEBBLETON_THEME)
    install(TARGETS pebbleton-theme RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT pebbleton-theme)
    install(FILES man/pebbleton-theme.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT pebbleton-theme)
    install(FILES CHANGELOG.md LICENSE DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/pebbleton-theme COMPONENT pebbleton-theme)
endif()
