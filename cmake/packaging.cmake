# Installation and packages. Linux: the engine in games/ with its man page in section 6, as
# Debian lays out games; CPack makes a .tar.gz and a .deb. Windows: korvane.exe, README and
# LICENSE at the top of a .zip.
include(GNUInstallDirs)
if(WIN32)
  install(TARGETS korvane korvane-uci RUNTIME DESTINATION .)
  install(FILES README.md LICENSE DESTINATION .)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY OFF)
else()
  install(TARGETS korvane korvane-uci RUNTIME DESTINATION games)
  # The man page and the changelog are shipped compressed, as Debian wants them.
  configure_file(packaging/korvane.6.in korvane.6 @ONLY)
  foreach(doc korvane.6 changelog)
    set(source ${CMAKE_CURRENT_BINARY_DIR}/korvane.6)
    if(doc STREQUAL changelog)
      set(source ${PROJECT_SOURCE_DIR}/packaging/changelog)
    endif()
    add_custom_command(OUTPUT ${doc}.gz COMMAND gzip -9n < ${source} > ${doc}.gz
      DEPENDS ${source} VERBATIM)
  endforeach()
  add_custom_target(korvane_docs ALL DEPENDS korvane.6.gz changelog.gz)
  # korvane-uci's page is korvane's, by a link.
  file(CREATE_LINK korvane.6.gz ${CMAKE_CURRENT_BINARY_DIR}/korvane-uci.6.gz SYMBOLIC)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/korvane.6.gz ${CMAKE_CURRENT_BINARY_DIR}/korvane-uci.6.gz
    DESTINATION ${CMAKE_INSTALL_MANDIR}/man6)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz packaging/copyright README.md
    DESTINATION ${CMAKE_INSTALL_DOCDIR})
  set(CPACK_GENERATOR TGZ DEB)
endif()

set(CPACK_PACKAGE_NAME korvane)
set(CPACK_PACKAGE_VENDOR "Brennik Dolmar")
set(CPACK_PACKAGE_CONTACT "Brennik Dolmar <brennik.dolmar@korvane.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "chess engine for the Universal Chess Interface")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_PACKAGE_FILE_NAME korvane-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# CPack puts the summary above this text.
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "Korvane plays chess through a GUI, a tournament manager or a terminal, over
the UCI protocol on standard input and output. It generates legal moves on
bitboards, judges positions with a hand-written evaluation and searches with
alpha-beta and iterative deepening within the depth and time it is given.")
include(CPack)
