# cpack -G DEB: orane_<version>_amd64.deb, its dependencies read from the binaries by
# dpkg-shlibdeps. The fonts are installed with the game, so their packages are not needed.
set(CPACK_PACKAGE_NAME orane)
set(CPACK_PACKAGE_VERSION ${ORANE_VERSION})
set(CPACK_PACKAGE_VENDOR "Studio Orane")
set(CPACK_PACKAGE_CONTACT "Studio Orane <contact@orane.games>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_GENERATOR DEB)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# orane-story draws its maps with Graphviz and measures pages on a virtual display when none is set.
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "graphviz, xvfb")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "detective story told in letters, in a shared notebook
An open notebook lies on a desk. Two people who never meet write to each other
in it by hand: Agent O of the Lyon police on the left page, and the player,
Monsieur N, on the right. Read her letters, turn the pages by dragging a
corner, and answer by choosing what Nathan writes back. All the game's text is
in French.
.
The package also holds orane-story, the story authors' tool, which checks,
walks, maps and plays the story files.")
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/debiangames.cmake)
include(CPack)
