# One static library a room, `tessaro_<room>`, from all the sources under src/<room>; a room that holds headers alone
# is an interface library, and a room that is still empty too.
#
# The rooms without Qt link each other as the table of rooms says. The rooms above them (views, app, cli) only see the
# headers: the programs put libtessaro under them, the tests put the static rooms.

# Sets `out` to the sources under a folder.
function(tessaro_sources out folder)
    file(GLOB_RECURSE found CONFIGURE_DEPENDS "${folder}/*.cpp")
    set(${out} "${found}" PARENT_SCOPE)
endfunction()

function(tessaro_add_room room rooms_below)
    tessaro_sources(sources "${CMAKE_SOURCE_DIR}/src/${room}")
    # The main function belongs to the program, so that tests can link the rest.
    list(REMOVE_ITEM sources "${CMAKE_SOURCE_DIR}/src/${room}/main.cpp")
    set(target tessaro_${room})
    if(sources)
        add_library(${target} STATIC ${sources})
        set(scope PUBLIC)
    else()
        add_library(${target} INTERFACE)
        set(scope INTERFACE)
    endif()
    target_link_libraries(${target} ${scope} tessaro_options ${TESSARO_LIBRARIES_${room}})
    if(room IN_LIST TESSARO_CORE_ROOMS)
        list(TRANSFORM rooms_below PREPEND tessaro_)
        target_link_libraries(${target} ${scope} ${rooms_below})
    endif()
endfunction()

# Reads the table and adds its rooms. Sets TESSARO_CORE_ROOMS, the rooms that make up libtessaro.
macro(tessaro_add_rooms table)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${table}")
    set(TESSARO_CORE_ROOMS)
    file(STRINGS "${table}" lines REGEX "^[a-z]+:")
    foreach(line IN LISTS lines)
        string(REGEX REPLACE ":.*" "" room "${line}")
        string(REGEX MATCHALL "[A-Za-z]+" rooms_below "${line}")
        list(REMOVE_ITEM rooms_below "${room}")
        if(room MATCHES "^(views|app)$")
            if(TESSARO_QT)
                tessaro_add_room(${room} "")
                tessaro_use_qt(tessaro_${room})
            endif()
        elseif(room STREQUAL "cli")
            if(TESSARO_PROGRAMS)
                tessaro_add_room(${room} "")
            endif()
        else()
            list(APPEND TESSARO_CORE_ROOMS ${room})
            tessaro_add_room(${room} "${rooms_below}")
        endif()
    endforeach()
    set(TESSARO_CORE_TARGETS ${TESSARO_CORE_ROOMS})
    list(TRANSFORM TESSARO_CORE_TARGETS PREPEND tessaro_)
endmacro()

# Lets a target of the Qt rooms run moc and use the precompiled header.
function(tessaro_use_qt target)
    get_target_property(type ${target} TYPE)
    if(NOT type STREQUAL "INTERFACE_LIBRARY")
        set_target_properties(${target} PROPERTIES AUTOMOC ON AUTOGEN_ORIGIN_DEPENDS OFF)
        target_precompile_headers(${target} PRIVATE "${CMAKE_SOURCE_DIR}/cmake/qt_headers.h")
        if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
            target_compile_options(${target} PRIVATE -fpch-preprocess) # so that ccache works with it
        endif()
    endif()
endfunction()
