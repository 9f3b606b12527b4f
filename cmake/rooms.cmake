# room(NAME FOLDER ON ROOM... INCLUDE DIR): the static library NAME of the sources that FOLDER/sources.cmake lists in
# SOURCES; INCLUDE names a folder of headers that its users include with <...>.
# program(NAME FILE ON ROOM...): an executable of one file on top of rooms.

add_library(orv_flags INTERFACE)
target_include_directories(orv_flags INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_features(orv_flags INTERFACE cxx_std_20)
if(MSVC)
    target_compile_options(orv_flags INTERFACE /W4 /WX /permissive- /utf-8)
    target_compile_definitions(orv_flags INTERFACE _CRT_SECURE_NO_WARNINGS NOMINMAX)
else()
    target_compile_options(orv_flags INTERFACE -Wall -Wextra -Wconversion -Wshadow -pedantic -Werror
        -Wno-sign-conversion        # indices of the API are int and unsigned by turns
        -ffp-contract=off)          # the same numbers on every machine
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_compile_options(orv_flags INTERFACE -Wno-restrict) # GCC 12 reports plain std::string concatenation
    endif()
endif()
if(MINGW AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # An inline function is compiled in several files, and the linker keeps one of them. For Windows, GCC takes its own
    # to be the one and relies on which registers that leaves alone; where the kept one uses others, callers go astray.
    add_compile_options(-fno-ipa-ra -fno-ipa-stack-alignment)
endif()
if(MINGW)
    # printf of the C99 kind, wide entry points, and programs that need no DLL of the compiler beside them
    target_compile_definitions(orv_flags INTERFACE __USE_MINGW_ANSI_STDIO=1 NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0601)
    target_link_options(orv_flags INTERFACE -static -municode)
endif()
if(ORV_SANITIZE)
    target_compile_options(orv_flags INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined
        -fno-omit-frame-pointer)
    target_link_options(orv_flags INTERFACE -fsanitize=address,undefined)
endif()
if(ORV_FUZZ)
    target_compile_options(orv_flags INTERFACE -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined)
    target_link_options(orv_flags INTERFACE -fsanitize=address,undefined)
endif()

# Header-only libraries come from the distribution; a cross compiler must see them without the rest of /usr/include.
set(ORV_HEADERS ${CMAKE_BINARY_DIR}/headers)
file(MAKE_DIRECTORY ${ORV_HEADERS})
foreach(library CLI nlohmann fast_float)
    find_path(ORV_PATH_OF_${library} NAMES ${library} PATHS /usr/include /usr/local/include NO_CMAKE_FIND_ROOT_PATH)
    if(NOT ORV_PATH_OF_${library})
        message(FATAL_ERROR "the headers of ${library} were not found: see README.md for the packages to install")
    endif()
    file(CREATE_LINK ${ORV_PATH_OF_${library}}/${library} ${ORV_HEADERS}/${library} SYMBOLIC)
endforeach()
target_include_directories(orv_flags SYSTEM INTERFACE ${ORV_HEADERS})

# ORV_PRECOMPILE: what nearly every file includes of the standard library is compiled once for all rooms. Builds that only
# serve tests take a third less time so; what people build goes without, so that every file must name what it uses.
option(ORV_PRECOMPILE "Precompile headers of the standard library" OFF)
if(ORV_PRECOMPILE)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # what GCC says of its own library when optimizing, once that comes precompiled
        target_compile_options(orv_flags INTERFACE -Wno-array-bounds -Wno-stringop-overflow -Wno-stringop-overread)
    endif()
    add_library(orv_precompiled STATIC ${PROJECT_SOURCE_DIR}/cmake/precompiled.cpp)
    target_link_libraries(orv_precompiled PRIVATE orv_flags)
    target_precompile_headers(orv_precompiled PRIVATE <algorithm> <array> <cmath> <cstddef> <cstdint> <cstring> <functional>
        <limits> <map> <memory> <optional> <set> <span> <string> <string_view> <unordered_map> <unordered_set> <utility>
        <variant> <vector>)
endif()

function(room name folder)
    cmake_parse_arguments(ROOM "" "INCLUDE" "ON" ${ARGN})
    set(SOURCES)
    include(${PROJECT_SOURCE_DIR}/${folder}/sources.cmake)
    list(TRANSFORM SOURCES PREPEND ${PROJECT_SOURCE_DIR}/${folder}/)
    set(scope INTERFACE)
    if(SOURCES)
        set(scope PUBLIC)
        add_library(${name} STATIC ${SOURCES})
        if(ORV_PRECOMPILE)
            target_precompile_headers(${name} REUSE_FROM orv_precompiled)
        endif()
    else()
        add_library(${name} INTERFACE)
    endif()
    target_link_libraries(${name} ${scope} orv_flags ${ROOM_ON})
    if(ROOM_INCLUDE)
        target_include_directories(${name} ${scope} ${ROOM_INCLUDE})
    endif()
endfunction()

function(program name file)
    cmake_parse_arguments(PROGRAM "" "" "ON" ${ARGN})
    if(EXISTS ${PROJECT_SOURCE_DIR}/${file})
        add_executable(${name} ${PROJECT_SOURCE_DIR}/${file})
        target_link_libraries(${name} PRIVATE ${PROGRAM_ON})
    endif()
endfunction()
