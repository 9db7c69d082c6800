# The warnings that the project's own code is free of. Headers of Qt, HDF5 and the other libraries come as system
# headers and are not judged.

option(BRENMARK_WERROR "Treat warnings as errors" ON)

add_library(brenmark_warnings INTERFACE)
target_compile_options(brenmark_warnings INTERFACE
    -Wall -Wextra -Wpedantic
    -Wshadow=local
    -Wnon-virtual-dtor -Woverloaded-virtual -Wextra-semi
    -Wcast-align -Wcast-qual
    -Wformat=2 -Wimplicit-fallthrough -Wvla
    -Wfloat-conversion
    $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wduplicated-branches -Wlogical-op>
    $<$<BOOL:${BRENMARK_WERROR}>:-Werror>)
