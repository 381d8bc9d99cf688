# Libraries of others; their headers count as system headers.

find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)

function(tessaro_package name)
    pkg_check_modules(${name} REQUIRED QUIET IMPORTED_TARGET ${ARGN})
endfunction()

tessaro_package(JACK jack)
tessaro_package(ALSA alsa)
tessaro_package(FLUIDSYNTH fluidsynth)
tessaro_package(RTAUDIO rtaudio)
tessaro_package(SNDFILE sndfile)
tessaro_package(SAMPLERATE samplerate)

# What the rooms without Qt need, by room. Header-only libraries need no word here.
set(TESSARO_LIBRARIES_base Threads::Threads)
set(TESSARO_LIBRARIES_plugin ${CMAKE_DL_LIBS})
set(TESSARO_LIBRARIES_platform PkgConfig::JACK PkgConfig::ALSA PkgConfig::FLUIDSYNTH PkgConfig::RTAUDIO
                               PkgConfig::SNDFILE PkgConfig::SAMPLERATE)

if(TESSARO_QT)
    add_compile_definitions(QT_NO_KEYWORDS) # `slots` and `emit` stay free names
    find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Widgets PrintSupport Svg)
    if(TESSARO_TESTS)
        find_package(Qt6 6.4 REQUIRED COMPONENTS Test)
    endif()
    set(TESSARO_LIBRARIES_views Qt6::Widgets Qt6::PrintSupport Qt6::Svg)
    set(TESSARO_LIBRARIES_app Qt6::Widgets)
endif()
if(TESSARO_PROGRAMS)
    find_package(CLI11 REQUIRED)
    find_package(nlohmann_json REQUIRED)
    set(TESSARO_LIBRARIES_cli CLI11::CLI11 nlohmann_json::nlohmann_json)
endif()
