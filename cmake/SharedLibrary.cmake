# The shared library: all internal objects behind one exported class.

add_library(Brenmark SHARED src/api/data_converter.h src/api/export.h)
target_link_libraries(Brenmark
    PUBLIC Qt5::Core
    PRIVATE "$<LINK_LIBRARY:WHOLE_ARCHIVE,brenmark_internal>")
target_include_directories(Brenmark INTERFACE "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>")
target_link_options(Brenmark PRIVATE "LINKER:--version-script=${CMAKE_SOURCE_DIR}/cmake/exports.map")
if(NOT BRENMARK_SANITIZE) # the sanitizers' own symbols come with the program
    target_link_options(Brenmark PRIVATE "LINKER:--no-undefined")
endif()
set_target_properties(Brenmark PROPERTIES
    LINKER_LANGUAGE CXX
    VERSION "${PROJECT_VERSION}"
    SOVERSION "${PROJECT_VERSION_MAJOR}"
    LINK_DEPENDS "${CMAKE_SOURCE_DIR}/cmake/exports.map"
    LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
