# Installing: the programs in bin/, the language reference in share/doc/quiller/, and on Linux a
# desktop entry, a MIME type for .prg files and an icon, so double-clicking a script runs it.
# `cpack` makes a .deb whose dependencies are found from the programs' libraries.
include(GNUInstallDirs)

install(TARGETS quillerc RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
if(TARGET quiller)
  install(TARGETS quiller RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
install(FILES ${PROJECT_BINARY_DIR}/docs/readme-quiller.htm
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/quiller)
if(UNIX AND TARGET quiller)
  install(FILES packaging/quiller.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES packaging/quiller-prg.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
  install(FILES packaging/quiller.svg
          DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
endif()

set(CPACK_PACKAGE_NAME quiller)
set(CPACK_PACKAGE_VENDOR Corvale)
set(CPACK_PACKAGE_CONTACT "Corvale <quiller@corvale.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Interpreter for .prg administration scripts")
set(CPACK_PACKAGE_DESCRIPTION
    "Quiller runs .prg scripts that automate workstations and servers: the desktop program\n"
    "quiller with its output, question, progress and debugger windows, and the console\n"
    "host quillerc.")
if(UNIX)
  set(CPACK_GENERATOR DEB)
else()
  set(CPACK_GENERATOR ZIP)
endif()
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION admin)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)  # libQt6Widgets6, libicu72, libsqlite3-0, ...
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "xdg-utils, shared-mime-info, desktop-file-utils")
include(CPack)
