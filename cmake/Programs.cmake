# libtessaro, the programs that link it, and what is installed.

include(GNUInstallDirs)

# All objects of the rooms without Qt, so that plug-ins find whatever is exported.
add_library(tessaro_shared SHARED "${CMAKE_SOURCE_DIR}/cmake/empty.cpp")
set_target_properties(tessaro_shared PROPERTIES OUTPUT_NAME tessaro LINKER_LANGUAGE CXX VERSION ${PROJECT_VERSION}
                                                SOVERSION ${PROJECT_VERSION_MAJOR})
foreach(room IN LISTS TESSARO_CORE_ROOMS)
    get_target_property(type tessaro_${room} TYPE)
    if(type STREQUAL "STATIC_LIBRARY")
        target_sources(tessaro_shared PRIVATE $<TARGET_OBJECTS:tessaro_${room}>)
    endif()
    target_link_libraries(tessaro_shared PRIVATE ${TESSARO_LIBRARIES_${room}})
endforeach()
target_link_libraries(tessaro_shared PUBLIC tessaro_options)
if(NOT TESSARO_SANITIZE)
    target_link_options(tessaro_shared PRIVATE -Wl,-z,defs)
endif()

# A program from src/<room>/main.cpp, the rest of its room, the rooms named behind, and libtessaro.
function(tessaro_add_program name room)
    set(main "${CMAKE_SOURCE_DIR}/src/${room}/main.cpp")
    file(GLOB found CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/src/${room}/main.cpp")
    if(NOT found)
        return()
    endif()
    list(TRANSFORM ARGN PREPEND tessaro_)
    add_executable(${name} "${main}")
    target_link_libraries(${name} PRIVATE tessaro_${room} ${ARGN} tessaro_shared)
    set_target_properties(${name} PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
    install(TARGETS ${name} RUNTIME)
endfunction()

tessaro_add_program(tessaro-cli cli)
if(TESSARO_QT)
    tessaro_add_program(tessaro app views)
endif()

# The data that programs look for in ../share/tessaro beside their own folder.
file(MAKE_DIRECTORY "${CMAKE_BINARY_DIR}/share")
file(CREATE_LINK "${CMAKE_SOURCE_DIR}/data" "${CMAKE_BINARY_DIR}/share/tessaro" SYMBOLIC)

install(TARGETS tessaro_shared LIBRARY)
install(DIRECTORY data/ DESTINATION ${CMAKE_INSTALL_DATADIR}/tessaro)
