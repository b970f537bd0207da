# Libraries and programs made of whole directories. A directory is looked at again at every build,
# so a new file needs no entry anywhere.

# Sources made of another system's functions: no library and no program here gets them.
if(WIN32)
    set(QUILLON_FOREIGN_SOURCES sim/PseudoTerminal.cpp sim/Station.cpp tests/sim/PseudoTerminalTest.cpp
        tools/explore/Copy.cpp src/qt/PosixDisk.cpp src/qt/RecordingWriter.cpp)
else()
    set(QUILLON_FOREIGN_SOURCES src/runtime/WindowsPower.cpp)
endif()
list(TRANSFORM QUILLON_FOREIGN_SOURCES PREPEND ${PROJECT_SOURCE_DIR}/)

# All sources below the directories; a main.cpp belongs to a program and never to a library.
function(quillon_sources result)
    set(found)
    foreach(directory IN LISTS ARGN)
        file(GLOB_RECURSE files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${directory}/*.cpp)
        list(APPEND found ${files})
    endforeach()
    list(REMOVE_ITEM found ${QUILLON_FOREIGN_SOURCES})
    set(${result} ${found} PARENT_SCOPE)
endfunction()

# quillon_library(name DIRECTORIES d... [INCLUDES i...] [LINKS l...] [DEFINITIONS d...])
# A library without a source file becomes a header-only one.
function(quillon_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "DIRECTORIES;INCLUDES;LINKS;DEFINITIONS")
    quillon_sources(sources ${arg_DIRECTORIES})
    list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
    list(TRANSFORM arg_INCLUDES PREPEND ${PROJECT_SOURCE_DIR}/)
    if(sources)
        add_library(${name} STATIC ${sources})
        target_link_libraries(${name} PRIVATE quillon_warnings)
        set(scope PUBLIC)
    else()
        add_library(${name} INTERFACE)
        set(scope INTERFACE)
    endif()
    target_include_directories(${name} ${scope} ${arg_INCLUDES})
    target_link_libraries(${name} ${scope} ${arg_LINKS})
    target_compile_definitions(${name} ${scope} ${arg_DEFINITIONS})
endfunction()

# quillon_program(name [SOURCES file...] [DIRECTORIES d...] LINKS l...)
# A program none of whose sources exists is left out.
function(quillon_program name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;DIRECTORIES;LINKS")
    quillon_sources(sources ${arg_DIRECTORIES})
    foreach(source IN LISTS arg_SOURCES)
        file(GLOB files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${source})
        list(APPEND sources ${files})
    endforeach()
    if(NOT sources)
        message(STATUS "${name}: no sources yet, left out.")
        return()
    endif()
    add_executable(${name} ${sources})
    target_link_libraries(${name} PRIVATE quillon_warnings ${arg_LINKS})
endfunction()
