# What every target of the project is compiled and linked with.

add_library(quillon_warnings INTERFACE)
target_compile_options(quillon_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow $<$<BOOL:${QUILLON_WERROR}>:-Werror>)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # Optimised, GCC 12 takes a short text put in front of another for one that overlaps itself.
    target_compile_options(quillon_warnings INTERFACE -Wno-restrict)
endif()

if(QUILLON_SANITIZE)
    set(QUILLON_SANITIZERS -fsanitize=address,undefined)
    add_compile_options(${QUILLON_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(${QUILLON_SANITIZERS})
    # With the sanitizers on, GCC takes parts of its own library for uninitialised.
    target_compile_options(quillon_warnings INTERFACE -Wno-maybe-uninitialized)
endif()

if(QUILLON_USE_CCACHE AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
    find_program(QUILLON_CCACHE ccache)
    if(QUILLON_CCACHE AND CMAKE_HOST_UNIX)
        # Results are shared between copies of the project, wherever they and their build directories lie.
        set(CMAKE_CXX_COMPILER_LAUNCHER
            env CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_NOHASHDIR=1
            CCACHE_SLOPPINESS=pch_defines,time_macros ${QUILLON_CCACHE})
    endif()
endif()

# What GCC keeps for link-time optimisation, lld cannot read.
if(QUILLON_USE_LLD AND NOT (CMAKE_INTERPROCEDURAL_OPTIMIZATION AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU"))
    include(CheckLinkerFlag)
    check_linker_flag(CXX -fuse-ld=lld QUILLON_LINKS_WITH_LLD)
    if(QUILLON_LINKS_WITH_LLD)
        add_link_options(-fuse-ld=lld)
    endif()
endif()
