# How every target of ours is compiled. The target `tessaro_options` carries it.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Debug)
endif()

# The build tree has the shape of the installed one, so that programs find library and data the same way in both.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

find_program(CCACHE ccache)
if(CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER
        "${CMAKE_COMMAND}" -E env "CCACHE_BASEDIR=${CMAKE_SOURCE_DIR}" "CCACHE_NOHASHDIR=1"
        "CCACHE_SLOPPINESS=pch_defines,time_macros" "${CCACHE}")
endif()

add_library(tessaro_options INTERFACE)
target_include_directories(tessaro_options INTERFACE "${CMAKE_SOURCE_DIR}/src")
target_compile_options(tessaro_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
target_compile_definitions(tessaro_options INTERFACE $<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>
                                                     TESSARO_VERSION="${PROJECT_VERSION}")
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    # The same set as with g++, where -Wconversion leaves signs alone.
    target_compile_options(tessaro_options INTERFACE -Wno-sign-conversion)
endif()

if(TESSARO_SANITIZE)
    set(sanitize -fsanitize=${TESSARO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    if(TESSARO_FUZZ)
        list(APPEND sanitize -fsanitize=fuzzer-no-link)
    endif()
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # g++ takes the sanitizers' own code for reads of what was not set; builds without them keep the warning.
        list(APPEND sanitize -Wno-maybe-uninitialized)
    endif()
    add_compile_options(${sanitize})
    add_link_options(-fsanitize=${TESSARO_SANITIZE})
endif()
