# Compiles through ccache where it is installed. The settings make hits independent of the folder's name and allow precompiled headers.

find_program(ORRENBY_CCACHE ccache)
mark_as_advanced(ORRENBY_CCACHE)
if(ORRENBY_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER env
        CCACHE_NOHASHDIR=1
        CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
        ${ORRENBY_CCACHE})
endif()
