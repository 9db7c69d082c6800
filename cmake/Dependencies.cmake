# What the project is built on; packages.txt lists the Debian packages for it.

# Libraries outside of the system's folders are found where they were when this was built. CMake would pad a path that it
# changes at the installation with an empty entry, and that is the working directory: anyone's libraries.
set(CMAKE_INSTALL_RPATH_USE_LINK_PATH ON)
set(CMAKE_BUILD_WITH_INSTALL_RPATH ON)

find_package(Qt5 5.15 REQUIRED COMPONENTS Core Gui Xml)
find_package(ZLIB 1.2.11 REQUIRED)
find_package(OpenMP REQUIRED COMPONENTS CXX)
set(THREADS_PREFER_PTHREAD_FLAG ON)
find_package(Threads REQUIRED)
if(BRENMARK_TOOL)
    find_package(CLI11 REQUIRED)
    find_package(nlohmann_json REQUIRED)
endif()

# The serial HDF5, shared, with its C++ interface: the parallel one has none.
set(HDF5_PREFER_PARALLEL OFF)
find_package(HDF5 1.10 REQUIRED COMPONENTS C CXX)
add_library(brenmark_hdf5 INTERFACE)
# Of the libraries found only HDF5's own are named: what it uses in turn is its own affair. By their own place: where the
# linker looks is one of the system's folders then, and nothing needs a search path.
list(FILTER HDF5_LIBRARIES INCLUDE REGEX "/libhdf5")
list(REMOVE_DUPLICATES HDF5_LIBRARIES)
foreach(library IN LISTS HDF5_LIBRARIES)
    file(REAL_PATH "${library}" place)
    target_link_libraries(brenmark_hdf5 INTERFACE "${place}")
endforeach()
target_include_directories(brenmark_hdf5 SYSTEM INTERFACE ${HDF5_INCLUDE_DIRS})
target_compile_definitions(brenmark_hdf5 INTERFACE ${HDF5_DEFINITIONS})

# Quick deflate and inflate. Without these zlib does their work, and takes several times as long. The code finds their
# headers by itself: a definition, which every compiler run would have, is only there where one isn't to be used.
option(BRENMARK_QUICK_DEFLATE "Use ISA-L and libdeflate where they are installed" ON)
add_library(brenmark_deflate INTERFACE)
set(BRENMARK_DEFLATE_LIBRARIES "") # by name, for what is installed
find_path(BRENMARK_ISAL_HEADER isa-l/igzip_lib.h)
find_library(BRENMARK_ISAL_LIBRARY isal)
find_path(BRENMARK_LIBDEFLATE_HEADER libdeflate.h)
find_library(BRENMARK_LIBDEFLATE_LIBRARY deflate)
foreach(name ISAL LIBDEFLATE)
    mark_as_advanced(BRENMARK_${name}_HEADER BRENMARK_${name}_LIBRARY)
    if(BRENMARK_QUICK_DEFLATE AND BRENMARK_${name}_HEADER AND BRENMARK_${name}_LIBRARY)
        string(REGEX REPLACE "^LIB" "" library ${name})
        string(TOLOWER ${library} library)
        target_link_libraries(brenmark_deflate INTERFACE ${library})
        list(APPEND BRENMARK_DEFLATE_LIBRARIES ${library})
    else()
        target_compile_definitions(brenmark_deflate INTERFACE BRENMARK_WITHOUT_${name})
    endif()
endforeach()
