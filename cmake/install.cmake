# cmake --install lays the game out as Linux games are: the commands under bin/, the game itself
# and its resources apart, a menu entry with its icons, AppStream metadata, manual pages and the
# licences. Every path is relative to the prefix, so any prefix works.
include(GNUInstallDirs)

set(ORANE_VERSION 1.0.0)
# The id of the desktop entry, the AppStream component and the icon.
set(ORANE_APP_ID games.orane.Orane)
# The game reads resources/ relative to its working directory: bin/orane starts it in this folder.
set(ORANE_INSTALL_DATADIR ${CMAKE_INSTALL_DATADIR}/orane)
set(ORANE_INSTALL_GAMEDIR lib/orane CACHE STRING "Where the game's own executable goes, under the prefix")

set(ORANE_PACKAGING_DIR ${CMAKE_SOURCE_DIR}/packaging)
set(ORANE_PACKAGING_BUILD ${CMAKE_BINARY_DIR}/packaging)

# The launcher finds the game and its data from where it lies itself.
file(RELATIVE_PATH ORANE_DATA_FROM_BIN /${CMAKE_INSTALL_BINDIR} /${ORANE_INSTALL_DATADIR})
file(RELATIVE_PATH ORANE_GAME_FROM_BIN /${CMAKE_INSTALL_BINDIR} /${ORANE_INSTALL_GAMEDIR}/orane)
configure_file(${ORANE_PACKAGING_DIR}/orane.in ${ORANE_PACKAGING_BUILD}/orane @ONLY)

# Manual pages and the changelog name the installed data folder and the version.
set(ORANE_DATA_DIR ${CMAKE_INSTALL_FULL_DATADIR}/orane)
set(ORANE_MANUAL_PAGES)
foreach(page orane.6 orane-story.1)
    configure_file(${ORANE_PACKAGING_DIR}/${page}.in ${ORANE_PACKAGING_BUILD}/${page} @ONLY)
    list(APPEND ORANE_MANUAL_PAGES ${ORANE_PACKAGING_BUILD}/${page}.gz)
endforeach()
configure_file(${ORANE_PACKAGING_DIR}/changelog.in ${ORANE_PACKAGING_BUILD}/changelog @ONLY)
configure_file(${ORANE_PACKAGING_DIR}/${ORANE_APP_ID}.metainfo.xml.in
               ${ORANE_PACKAGING_BUILD}/${ORANE_APP_ID}.metainfo.xml @ONLY)

# Compressed without a time stamp, so that the package is the same on every build.
foreach(compressed IN LISTS ORANE_MANUAL_PAGES ITEMS ${ORANE_PACKAGING_BUILD}/changelog.gz)
    string(REGEX REPLACE "\\.gz$" "" plain ${compressed})
    add_custom_command(
        OUTPUT ${compressed}
        COMMAND gzip -n -9 -c ${plain} > ${compressed}
        DEPENDS ${plain}
        VERBATIM)
endforeach()
add_custom_target(orane_documents ALL DEPENDS ${ORANE_MANUAL_PAGES} ${ORANE_PACKAGING_BUILD}/changelog.gz)

install(PROGRAMS ${ORANE_PACKAGING_BUILD}/orane DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS orane RUNTIME DESTINATION ${ORANE_INSTALL_GAMEDIR})
install(TARGETS orane-story RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY ${CMAKE_BINARY_DIR}/resources DESTINATION ${ORANE_INSTALL_DATADIR})
install(FILES ${ORANE_PACKAGING_DIR}/${ORANE_APP_ID}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${ORANE_PACKAGING_BUILD}/${ORANE_APP_ID}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(DIRECTORY ${CMAKE_BINARY_DIR}/icons/ DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
install(FILES ${ORANE_PACKAGING_BUILD}/orane.6.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man6)
install(FILES ${ORANE_PACKAGING_BUILD}/orane-story.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${ORANE_PACKAGING_DIR}/copyright ${ORANE_PACKAGING_BUILD}/changelog.gz
        DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/orane)
