# The sources of a folder in one compiler run (BRENMARK_UNITY): what they all include is parsed, and what they all
# instantiate is generated, once. A file that changes costs its folder; the preset "develop" compiles file by file.

option(BRENMARK_UNITY "Compile the sources of a folder in one compiler run" ON)

function(compile_by_folder target)
    if(NOT BRENMARK_UNITY)
        return()
    endif()
    get_target_property(sources ${target} SOURCES)
    foreach(source IN LISTS sources)
        if(source MATCHES "\\.cpp$")
            cmake_path(GET source PARENT_PATH folder)
            cmake_path(RELATIVE_PATH folder BASE_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}")
            string(REPLACE "/" "_" group "${folder}")
            set_property(SOURCE "${source}" PROPERTY UNITY_GROUP "${group}")
        endif()
    endforeach()
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
endfunction()
