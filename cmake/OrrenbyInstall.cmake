# What an installed Orrenby consists of: the floors with their headers, a CMake package, and files for pkg-config.

include(CMakePackageConfigHelpers)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/Orrenby)

# What a program needs to run is one component; what a programmer needs beyond it, the test kit included, is the other.
function(orrenby_install libraries)
    install(TARGETS ${ARGN}
        EXPORT OrrenbyTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${libraries} NAMELINK_COMPONENT Development
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT ${libraries}
        FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT Development)
endfunction()

orrenby_install(Runtime OrrenbyPlatform OrrenbyStandard OrrenbyUtilities OrrenbyFoundation OrrenbyOrrenby)
orrenby_install(Development OrrenbyTesting)
install(EXPORT OrrenbyTargets NAMESPACE Orrenby:: DESTINATION ${package_folder} COMPONENT Development)

configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/OrrenbyConfig.cmake.in
    ${PROJECT_BINARY_DIR}/OrrenbyConfig.cmake
    INSTALL_DESTINATION ${package_folder}
    NO_SET_AND_CHECK_MACRO)
# Before 1.0 every minor version may change what a program sees.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/OrrenbyConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/OrrenbyConfig.cmake ${PROJECT_BINARY_DIR}/OrrenbyConfigVersion.cmake
    DESTINATION ${package_folder} COMPONENT Development)

# gdb loads what lies here under the whole name of a library that a program has loaded.
file(REAL_PATH ${CMAKE_INSTALL_FULL_LIBDIR} library_folder)
install(FILES ${PROJECT_SOURCE_DIR}/Debugging/orrenby_printers.py
    DESTINATION ${CMAKE_INSTALL_DATADIR}/gdb/auto-load${library_folder}
    RENAME libOrrenbyPlatform.so.${PROJECT_VERSION}-gdb.py
    COMPONENT Development)

# orrenby_pkgconfig(name description libraries requires): paths are relative to the file, so that an installed tree can be moved.
function(orrenby_pkgconfig PC_NAME PC_DESCRIPTION PC_LIBRARIES PC_REQUIRES)
    set(folder ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
    cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY ${folder} OUTPUT_VARIABLE PC_PREFIX)
    list(TRANSFORM PC_LIBRARIES PREPEND "-lOrrenby")
    list(JOIN PC_LIBRARIES " " PC_LIBRARIES)
    string(APPEND PC_LIBRARIES "${libraries_beneath}")
    set(PC_DEFINITIONS)
    if(ORRENBY_DIAGNOSTICS)
        set(PC_DEFINITIONS -DORRENBY_DIAGNOSTICS)
    endif()
    configure_file(${PROJECT_SOURCE_DIR}/cmake/orrenby.pc.in ${PROJECT_BINARY_DIR}/${PC_NAME}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${PC_NAME}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT Development)
endfunction()

# A static library hands on what it links to; a shared one has it inside.
set(beneath)
set(libraries_beneath)
if(NOT BUILD_SHARED_LIBS)
    set(beneath "fmt, icu-i18n, icu-uc, libcrypto, sqlite3")
    set(libraries_beneath " -lboost_json -lre2")
endif()
orrenby_pkgconfig(orrenby "${PROJECT_DESCRIPTION}" "Foundation;Utilities;Standard;Platform" "${beneath}")
orrenby_pkgconfig(orrenby-testing "Test kit of Orrenby" "Testing" "orrenby = ${PROJECT_VERSION}")

include(OrrenbyPackage)
