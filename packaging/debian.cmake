# The Debian package, which scripts/package.sh makes.
file(STRINGS changelog head LIMIT_COUNT 1)
if(NOT head MATCHES "^quorvel [(]([0-9.]+)-([0-9]+)[)]" OR
   NOT CMAKE_MATCH_1 VERSION_EQUAL PROJECT_VERSION)
  message(FATAL_ERROR "packaging/changelog begins with \"${head}\", and the version in "
    "CMakeLists.txt is ${PROJECT_VERSION}: add an entry to packaging/changelog")
endif()
set(CPACK_DEBIAN_PACKAGE_RELEASE ${CMAKE_MATCH_2})

install(FILES lintian-overrides DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
  RENAME quorvel)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quorvel)
set(CPACK_PACKAGE_VENDOR "The makers of Quorvel")
set(CPACK_PACKAGE_CONTACT "${QUORVEL_CONTACT}")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/package)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/staged_files.cmake)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION net)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE https://${QUORVEL_PRODUCT_HOST}/)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "log of the reports that other computers send
Programs on the local network send short texts, the results of a quiz, of a
lesson, of a test run, and Quorvel adds each text to a running log as the
text arrives. Senders and listeners meet in the group of a key, a word or two
of the user's choice; there is no server.

The package also has quorvel-send, which sends messages from the command
line, and quorvel-check, which tells why no message arrives.")

# The libraries come from the programs. The sound's player is part of the multimedia library, and
# the window system X11 part of the toolkit's.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS hicolor-icon-theme)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland, qt6-translations-l10n")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS nftables)
include(CPack)
