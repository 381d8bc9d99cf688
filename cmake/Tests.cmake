# One GoogleTest program a folder of tests, `test_<folder>`, and every case of it a test of ctest, labelled with the
# folder's name. A folder named after a room links that room and those below; any other folder links all rooms without
# Qt. Tests link the static rooms, so that they reach what libtessaro hides. What several folders share is in
# tests/support: a static library, so that each program takes only what it names.

include(GoogleTest)
find_package(GTest REQUIRED)

set(TESSARO_TEST_TIMEOUT 120 CACHE STRING "Seconds that one test may take")

tessaro_sources(support "${CMAKE_SOURCE_DIR}/tests/support")
if(support)
    add_library(tessaro_test_support STATIC ${support})
    target_include_directories(tessaro_test_support PUBLIC "${CMAKE_SOURCE_DIR}/tests")
    target_link_libraries(tessaro_test_support PRIVATE tessaro_options GTest::gmock)
endif()

function(tessaro_add_test folder)
    tessaro_sources(sources "${CMAKE_SOURCE_DIR}/tests/${folder}")
    if(NOT sources)
        return()
    endif()
    set(target test_${folder})
    add_executable(${target} ${sources})
    target_include_directories(${target} PRIVATE "${CMAKE_SOURCE_DIR}/tests")
    target_compile_definitions(${target} PRIVATE TESSARO_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
    if(folder IN_LIST TESSARO_CORE_ROOMS)
        target_link_libraries(${target} PRIVATE tessaro_${folder})
    elseif(NOT folder STREQUAL "house")
        if(folder MATCHES "^(app|desktop)$")
            target_link_libraries(${target} PRIVATE tessaro_app tessaro_views)
        elseif(folder STREQUAL "streams")
            target_sources(${target} PRIVATE "${CMAKE_SOURCE_DIR}/tests/platform/jack_server.cpp")
            target_link_libraries(${target} PRIVATE tessaro_cli)
        elseif(TARGET tessaro_${folder})
            target_link_libraries(${target} PRIVATE tessaro_${folder})
        endif()
        target_link_libraries(${target} PRIVATE ${TESSARO_CORE_TARGETS})
    endif()
    if(TARGET tessaro_test_support)
        target_link_libraries(${target} PRIVATE tessaro_test_support)
    endif()
    target_link_libraries(${target} PRIVATE tessaro_options GTest::gtest_main GTest::gmock)

    if(folder MATCHES "^(views|app|desktop)$")
        set_target_properties(${target} PROPERTIES AUTOMOC ON)
        target_link_libraries(${target} PRIVATE Qt6::Test)
        # Without a screen; the folder keeps Qt from complaining.
        set(runtime "${CMAKE_BINARY_DIR}/run")
        file(MAKE_DIRECTORY "${runtime}")
        file(CHMOD "${runtime}" PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
        set_target_properties(${target} PROPERTIES CROSSCOMPILING_EMULATOR
            "${CMAKE_COMMAND};-E;env;QT_QPA_PLATFORM=offscreen;XDG_RUNTIME_DIR=${runtime}")
    endif()
    if(TARGET tessaro-cli AND folder MATCHES "^(cli|streams)$")
        target_compile_definitions(${target} PRIVATE TESSARO_CLI="$<TARGET_FILE:tessaro-cli>")
        add_dependencies(${target} tessaro-cli)
    endif()
    gtest_discover_tests(${target} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
                         PROPERTIES TIMEOUT ${TESSARO_TEST_TIMEOUT} LABELS ${folder})
endfunction()

file(GLOB folders CONFIGURE_DEPENDS LIST_DIRECTORIES true RELATIVE "${CMAKE_SOURCE_DIR}/tests"
     "${CMAKE_SOURCE_DIR}/tests/*")
list(REMOVE_ITEM folders support)
foreach(folder IN LISTS folders)
    if(IS_DIRECTORY "${CMAKE_SOURCE_DIR}/tests/${folder}" AND (TESSARO_QT OR NOT folder MATCHES "^(views|app|desktop)$"))
        tessaro_add_test(${folder})
    endif()
endforeach()

# The example song is what its generator writes.
tessaro_sources(sources "${CMAKE_SOURCE_DIR}/examples/compose")
if(sources)
    add_executable(compose ${sources})
    target_link_libraries(compose PRIVATE tessaro_base)
    file(GLOB songs CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/examples/*.mid")
    foreach(song IN LISTS songs)
        cmake_path(GET song FILENAME name)
        add_test(NAME examples.${name} COMMAND "${CMAKE_COMMAND}" -D "COMPOSE=$<TARGET_FILE:compose>" -D "SONG=${song}"
                 -D "OUT=${CMAKE_BINARY_DIR}/${name}" -P "${CMAKE_SOURCE_DIR}/cmake/CompareSong.cmake")
        set_tests_properties(examples.${name} PROPERTIES LABELS examples TIMEOUT ${TESSARO_TEST_TIMEOUT})
    endforeach()
endif()
