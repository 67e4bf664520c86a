# Flags and switches that hold for every target.

option(ZALMO_TESTS "Build the tests" ON)
option(ZALMO_BENCH "Build the benchmarks" OFF)
option(ZALMO_SANITIZE "Address and undefined-behaviour sanitizers" OFF)
option(ZALMO_FUZZ "Build the fuzz targets (needs clang)" OFF)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # All build folders share one cache.
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_NOHASHDIR=1
        ${CCACHE_PROGRAM})
endif()

# Warnings are errors in the presets that the developers use.
add_compile_options(-Wall -Wextra)
add_compile_definitions(QT_NO_KEYWORDS)
# Holds for the program; tests may write plain literals.
set(ZALMO_STRICT_TEXT QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING)

if(ZALMO_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()
if(ZALMO_FUZZ)
    # Clang 14 cannot assemble coroutines that are checked by -fsanitize=function.
    add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize=function -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()
