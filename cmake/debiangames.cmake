# Run by cpack on the package's files: Debian keeps games in /usr/games, which its users' PATH
# holds, while root's holds only /usr/bin. The command stays in /usr/bin; /usr/games names it too.
set(ORANE_PACKAGE_USR ${CPACK_TEMPORARY_DIRECTORY}/${CPACK_PACKAGING_INSTALL_PREFIX})
file(MAKE_DIRECTORY ${ORANE_PACKAGE_USR}/games)
file(CREATE_LINK ../bin/orane ${ORANE_PACKAGE_USR}/games/orane SYMBOLIC)
