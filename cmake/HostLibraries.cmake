# What a host links: Brenmark::shared, all internal objects behind one exported class, or Brenmark::static, the objects
# themselves. Brenmark::Brenmark is the shared one; in an installed package it is the one that the host asks for.

# Hosts include <Brenmark/data_converter.h>, from the build tree as from an installation.
set(host_headers "${PROJECT_BINARY_DIR}/include")
foreach(header data_converter.h export.h)
    configure_file("src/api/${header}" "${host_headers}/Brenmark/${header}" COPYONLY)
endforeach()
target_include_directories(brenmark_internal INTERFACE "${host_headers}")

add_library(Brenmark SHARED src/api/data_converter.h src/api/export.h)
target_link_libraries(Brenmark
    PUBLIC Qt5::Core
    PRIVATE "$<LINK_LIBRARY:WHOLE_ARCHIVE,brenmark_internal>")
target_include_directories(Brenmark INTERFACE
    "$<BUILD_INTERFACE:${host_headers}>" "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>")
target_link_options(Brenmark PRIVATE "LINKER:--version-script=${PROJECT_SOURCE_DIR}/cmake/exports.map")
if(NOT BRENMARK_SANITIZE) # the sanitizers' own symbols come with the program
    target_link_options(Brenmark PRIVATE "LINKER:--no-undefined")
endif()
set_target_properties(Brenmark PROPERTIES
    EXPORT_NAME shared
    LINKER_LANGUAGE CXX
    VERSION "${PROJECT_VERSION}"
    SOVERSION "${PROJECT_VERSION_MAJOR}"
    LINK_DEPENDS "${PROJECT_SOURCE_DIR}/cmake/exports.map"
    LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")

target_compile_features(Brenmark PUBLIC cxx_std_17)

# The headers for plug-ins, which link nothing.
add_library(brenmark_plugin INTERFACE)
target_include_directories(brenmark_plugin INTERFACE "${PROJECT_SOURCE_DIR}/include")
target_compile_features(brenmark_plugin INTERFACE cxx_std_17)
add_library(Brenmark::plugin ALIAS brenmark_plugin)

add_library(Brenmark::Brenmark ALIAS Brenmark)
add_library(Brenmark::shared ALIAS Brenmark)
add_library(Brenmark::static ALIAS brenmark_internal)
