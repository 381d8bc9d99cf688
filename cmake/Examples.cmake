# The generator of the example song, and a test that the song in the tree is what it writes.

add_executable(compose EXCLUDE_FROM_ALL)
target_sources(compose PRIVATE "${CMAKE_SOURCE_DIR}/examples/compose/main.cpp"
                               "${CMAKE_SOURCE_DIR}/examples/compose/score.cpp")
target_link_libraries(compose PRIVATE tessaro_base tessaro_options)
if(TESSARO_TESTS)
    set_target_properties(compose PROPERTIES EXCLUDE_FROM_ALL OFF)
    add_test(NAME examples.SongIsWhatTheGeneratorWrites
             COMMAND sh -c "\"$<TARGET_FILE:compose>\" song.mid && cmp song.mid \"$1\"" --
                     "${CMAKE_SOURCE_DIR}/examples/harbour-lights.mid")
    set_tests_properties(examples.SongIsWhatTheGeneratorWrites PROPERTIES LABELS examples)
endif()
