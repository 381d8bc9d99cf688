# One libFuzzer target a file of fuzz/, `fuzz_<name>`. The rooms below are instrumented as well.

if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "Fuzz targets need clang: cmake --preset fuzz")
endif()

file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/fuzz/*.cpp")
foreach(source IN LISTS sources)
    cmake_path(GET source STEM name)
    add_executable(fuzz_${name} "${source}")
    target_link_libraries(fuzz_${name} PRIVATE ${TESSARO_CORE_TARGETS})
    target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
endforeach()
