# One Google Benchmark program a file of bench/, `bench_<name>`.

find_package(benchmark REQUIRED)

file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/bench/*.cpp")
foreach(source IN LISTS sources)
    cmake_path(GET source STEM name)
    if(name MATCHES "views$" AND NOT TESSARO_QT)
        continue()
    endif()
    add_executable(bench_${name} "${source}")
    target_compile_definitions(bench_${name} PRIVATE TESSARO_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
    target_link_libraries(bench_${name} PRIVATE ${TESSARO_CORE_TARGETS} benchmark::benchmark)
    if(name MATCHES "views$")
        target_include_directories(bench_${name} PRIVATE "${CMAKE_SOURCE_DIR}/tests")
        target_link_libraries(bench_${name} PRIVATE tessaro_app tessaro_views ${TESSARO_CORE_TARGETS})
    endif()
endforeach()
