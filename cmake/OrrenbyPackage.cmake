# One development package with libraries, headers and package files, as an archive and for Debian.

set(CPACK_GENERATOR TGZ DEB)
set(CPACK_PACKAGE_NAME orrenby)
set(CPACK_PACKAGE_CONTACT "Orrenby maintainers <maintainers@orrenby.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY ${PROJECT_DESCRIPTION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_PACKAGE_NAME liborrenby-dev)
set(CPACK_DEBIAN_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/Orrenby)
include(CPack)
