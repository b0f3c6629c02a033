set(STINTBOOK_BUILD_KIND development CACHE STRING "What this build is: development, or installed on a user's machine")
set_property(CACHE STINTBOOK_BUILD_KIND PROPERTY STRINGS development installed)
if(NOT STINTBOOK_BUILD_KIND MATCHES "^(development|installed)$")
    message(FATAL_ERROR "STINTBOOK_BUILD_KIND is development or installed, not \"${STINTBOOK_BUILD_KIND}\"")
endif()

set(STINTBOOK_SANITIZE "" CACHE STRING "Sanitizers of the whole build, as for -fsanitize=")
option(BUILD_TESTING "Build the tests" ON)
option(STINTBOOK_BENCHMARKS "Build the benchmarks" OFF)
option(STINTBOOK_LIBFUZZER "Drive the fuzz targets by libFuzzer (needs clang) instead of by their own driver" OFF)

set(CMAKE_CXX_STANDARD 23)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

add_compile_options(
    -Wall -Wextra -Wpedantic -Wnon-virtual-dtor -Woverloaded-virtual -Wextra-semi
    # A designated initializer names what differs from the defaults; the rest is meant to be left out.
    -Wno-missing-field-initializers)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # A local may be named as a function is. g++ 12 reports falsely: -Wrestrict for a literal joined to a string,
    # -Wmaybe-uninitialized for an expected whose error is a variant.
    add_compile_options(-Wshadow=local -Wno-restrict -Wno-maybe-uninitialized)
else()
    # The macros of sd-bus hold them.
    add_compile_options(-Wshadow -Wno-c99-extensions)
endif()

if(STINTBOOK_SANITIZE)
    add_compile_options(-fsanitize=${STINTBOOK_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${STINTBOOK_SANITIZE})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # These two double the time to compile. The address sanitizer stops at a null pointer, too, and the fuzz
        # targets, which Clang builds, check alignment.
        add_compile_options(-fno-sanitize=null,alignment)
    endif()
endif()

if(STINTBOOK_LIBFUZZER)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

find_program(STINTBOOK_MOLD mold)
mark_as_advanced(STINTBOOK_MOLD)
if(STINTBOOK_MOLD)
    add_link_options(-fuse-ld=mold)
endif()

# Paths are taken relative to the source directory, so that all build directories share one cache.
find_program(STINTBOOK_CCACHE ccache)
mark_as_advanced(STINTBOOK_CCACHE)
if(STINTBOOK_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER
        env CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_NOHASHDIR=1 CCACHE_MAXSIZE=5G
        CCACHE_SLOPPINESS=include_file_mtime,include_file_ctime,time_macros ${STINTBOOK_CCACHE})
endif()

# Where programs find modules of ours, in the build tree and installed. As RPATH: a RUNPATH does not count where a
# sanitizer's runtime does the loading.
set(CMAKE_BUILD_RPATH "${CMAKE_BINARY_DIR}/lib/velloran")
set(CMAKE_INSTALL_RPATH "$ORIGIN/../lib/velloran")
add_link_options(LINKER:--disable-new-dtags)
