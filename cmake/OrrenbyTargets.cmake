# How this project's targets are made. A new source, header or test file only has to be put in its folder.

find_package(Threads REQUIRED)

# What our own targets are compiled with. Users of the installed library get C++20 and nothing else.
# g++ 12 warns about an overlap in "literal" + std::string wherever it optimises; there is none.
add_library(OrrenbyWarnings INTERFACE)
target_compile_options(OrrenbyWarnings INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
    $<$<CXX_COMPILER_ID:Clang>:-Werror=reorder-init-list -Wno-unused-private-field>)

# Lets the compiler cache recognise a precompiled header by its content instead of its time of making.
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    set(ORRENBY_PRECOMPILED_HEADER_OPTIONS -fpch-preprocess)
elseif(CMAKE_CXX_COMPILER_ID MATCHES Clang)
    set(ORRENBY_PRECOMPILED_HEADER_OPTIONS "SHELL:-Xclang -fno-pch-timestamp")
endif()

# orrenby_floor(Name [REQUIRES floors...] [LINKS private libraries...])
# The library of one floor: every .hpp and .cpp below the folder Orrenby/Name, and the umbrella header beside it.
function(orrenby_floor name)
    cmake_parse_arguments(FLOOR "" "" "REQUIRES;LINKS" ${ARGN})
    set(folder ${PROJECT_SOURCE_DIR}/Orrenby/${name})
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${folder}/*.cpp)
    file(GLOB_RECURSE headers CONFIGURE_DEPENDS ${folder}/*.hpp)

    set(target Orrenby${name})
    add_library(${target})
    add_library(Orrenby::${name} ALIAS ${target})
    target_sources(${target}
        PRIVATE ${sources}
        PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${headers} ${folder}.hpp)
    target_compile_features(${target} PUBLIC cxx_std_20)
    target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:OrrenbyWarnings> ${FLOOR_LINKS})
    foreach(floor IN LISTS FLOOR_REQUIRES)
        target_link_libraries(${target} PUBLIC Orrenby${floor})
    endforeach()
    if(ORRENBY_DIAGNOSTICS)
        target_compile_definitions(${target} PUBLIC ORRENBY_DIAGNOSTICS)
    endif()
    set_target_properties(${target} PROPERTIES
        EXPORT_NAME ${name}
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        LINKER_LANGUAGE CXX # also while a floor consists of headers alone
        DEFINE_SYMBOL ""    # static and shared objects are the same, so the compiler cache serves both
        INSTALL_RPATH $ORIGIN
        CXX_EXTENSIONS OFF
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        POSITION_INDEPENDENT_CODE ON
        VERIFY_INTERFACE_HEADER_SETS ON)
endfunction()

# orrenby_tests(Folder [LINKS libraries...])
# The tests below Tests/Folder: one program for the .cpp files of the folder itself, and one for each room, that is, for all
# .cpp files below a sub-folder. Tests/Platform/Objects makes the program PlatformObjectsTests. A folder without tests makes none.
# Every case is a ctest of its own, hence a process of its own: a process-wide latch or handler that one case sets never
# reaches another.
function(orrenby_tests folder)
    cmake_parse_arguments(SUITE "" "" "LINKS" ${ARGN})
    set(base ${PROJECT_SOURCE_DIR}/Tests)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS RELATIVE ${base} ${base}/${folder}/*.cpp)
    set(suites)
    foreach(source IN LISTS sources)
        string(REGEX MATCH "^${folder}(/[^/]+)?/" suite ${source})
        string(REGEX REPLACE "/$" "" suite ${suite})
        list(APPEND suites ${suite})
        list(APPEND "sources of ${suite}" ${base}/${source})
    endforeach()
    list(REMOVE_DUPLICATES suites)

    foreach(suite IN LISTS suites)
        string(REPLACE "/" "" target "${suite}Tests")
        add_executable(${target} ${sources\ of\ ${suite}})
        target_link_libraries(${target} PRIVATE OrrenbyTestMain ${SUITE_LINKS})
        target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR})
        target_precompile_headers(${target} REUSE_FROM OrrenbyTestMain)
        set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
        gtest_discover_tests(${target} NO_PRETTY_VALUES TEST_PREFIX ${suite}/ DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120)
    endforeach()
endfunction()

# orrenby_embed_texts(target function folder)
# Puts the .txt files of a folder into the target, which then needs no file when it runs. `function` gives them, in the
# order of their names: std::span<const EmbeddedText> orrenby::detail::function(). See Orrenby/Platform/Text/EmbeddedText.hpp.
function(orrenby_embed_texts target function folder)
    file(GLOB files CONFIGURE_DEPENDS ${folder}/*.txt)
    set(entries)
    foreach(file IN LISTS files)
        cmake_path(GET file STEM name)
        file(READ ${file} text)
        string(APPEND entries "        {\"${name}\", R\"text(${text})text\"},\n")
        set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
    endforeach()
    file(CONFIGURE OUTPUT ${function}.cpp @ONLY CONTENT [=[
#include "Orrenby/Platform/Text/EmbeddedText.hpp"

namespace orrenby::inline ORRENBY_ABI::detail {

std::span<const EmbeddedText> @function@()
{
    static constexpr EmbeddedText texts[] = {
@entries@    };
    return texts;
}

} // namespace orrenby::inline ORRENBY_ABI::detail
]=])
    target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${function}.cpp)
endfunction()
