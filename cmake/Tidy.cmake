# `ninja tidy` runs clang-tidy over the sources of the rooms in this build.

find_program(CLANG_TIDY clang-tidy-14)
find_program(RUN_CLANG_TIDY run-clang-tidy-14)
if(CLANG_TIDY AND RUN_CLANG_TIDY)
    add_custom_target(tidy
        COMMAND "${RUN_CLANG_TIDY}" -quiet -p "${CMAKE_BINARY_DIR}" -clang-tidy-binary "${CLANG_TIDY}"
                "${CMAKE_SOURCE_DIR}/src/.*\\.cpp$"
        USES_TERMINAL VERBATIM)
endif()
