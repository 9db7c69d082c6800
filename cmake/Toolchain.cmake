# Language level, visibility, compiler cache and sanitizers: what holds for every target.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_AUTOGEN_ORIGIN_DEPENDS OFF)   # what Qt generates from a header needs no library built before it

if(NOT CMAKE_BUILD_TYPE AND PROJECT_IS_TOP_LEVEL)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Debug, Release or RelWithDebInfo" FORCE)
endif()

# Binaries name no folder of the machine they were built on.
add_compile_options("-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.")

# A program needs the libraries that it uses, not all that are on offer: Qt's Gui alone pulls in twenty.
add_link_options(LINKER:--as-needed)

# A sanitizer's report must end the program, or a test passes in spite of it.
set(BRENMARK_SANITIZE "" CACHE STRING "Sanitizers to build with, for example address,undefined")
if(BRENMARK_SANITIZE)
    add_compile_options("-fsanitize=${BRENMARK_SANITIZE}" -fno-sanitize-recover=all -fno-omit-frame-pointer)
    # What the sanitizers add to a function makes GCC lose sight of what is set in it: <regex> alone has ten such warnings.
    add_compile_options($<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    add_link_options("-fsanitize=${BRENMARK_SANITIZE}")
endif()

# The compiler cache. Paths below the source folder are made relative, so that two checkouts share what they compile;
# precompiled headers need the sloppiness, and -fpch-preprocess so that they count by their content.
option(BRENMARK_CCACHE "Use ccache if it is installed" ON)
find_program(BRENMARK_CCACHE_PROGRAM ccache)
if(BRENMARK_CCACHE AND BRENMARK_CCACHE_PROGRAM)
    set(launcher "${CMAKE_COMMAND}" -E env "CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}"
        "CCACHE_SLOPPINESS=pch_defines,time_macros" "${BRENMARK_CCACHE_PROGRAM}")
    set(CMAKE_C_COMPILER_LAUNCHER "${launcher}")
    set(CMAKE_CXX_COMPILER_LAUNCHER "${launcher}")
    add_compile_options("$<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>")
endif()
