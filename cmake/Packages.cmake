# cpack: a Debian package for each component (the library, its development files, the command line, the Python package),
# with what each needs of the system it is built on. What Debian wants beside that is in cmake/debian. The preset package
# has the folders and the hardening of Debian's own packages.
if(NOT PROJECT_IS_TOP_LEVEL)
    return()
endif()

# Who hands packages on puts a name and an address here; that domain is set apart for examples, and no one reads it.
set(BRENMARK_MAINTAINER "The Brenmark developers <brenmark@example.org>" CACHE STRING
    "Name and address that the packages show")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME brenmark)
set(CPACK_PACKAGE_VENDOR "The Brenmark developers")
set(CPACK_PACKAGE_CONTACT "${BRENMARK_MAINTAINER}")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each has its own
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 0upstream1) # below whatever Debian itself may have one day
set(BRENMARK_PACKAGE_VERSION "${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS OFF)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}/lib")

string(TIMESTAMP BRENMARK_PACKAGE_TIME "%a, %d %b %Y %H:%M:%S +0000" UTC) # of SOURCE_DATE_EPOCH if there is one

# brenmark_package(COMPONENT NAME SECTION SYNOPSIS DESCRIPTION): the package of a component, with its copyright and changes.
function(brenmark_package component BRENMARK_PACKAGE section synopsis description)
    string(TOUPPER ${component} key)
    foreach(setting "PACKAGE_NAME;${BRENMARK_PACKAGE}" "PACKAGE_SECTION;${section}"
            "DESCRIPTION;${synopsis}\n${description}")
        list(POP_FRONT setting name)
        set(CPACK_DEBIAN_${key}_${name} "${setting}" PARENT_SCOPE)
    endforeach()
    set(CPACK_COMPONENTS_ALL ${CPACK_COMPONENTS_ALL} ${component} PARENT_SCOPE)

    set(folder "${PROJECT_BINARY_DIR}/package/${BRENMARK_PACKAGE}")
    configure_file(cmake/debian/copyright.in "${folder}/copyright" @ONLY)
    configure_file(cmake/debian/changelog.in "${folder}/changelog.Debian" @ONLY)
    configure_file(CHANGELOG.md "${folder}/changelog" COPYONLY)
    execute_process(COMMAND "${BRENMARK_GZIP}" -9nf "${folder}/changelog.Debian" "${folder}/changelog"
        COMMAND_ERROR_IS_FATAL ANY)
    install(FILES "${folder}/copyright" "${folder}/changelog.Debian.gz" "${folder}/changelog.gz"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${BRENMARK_PACKAGE}" COMPONENT ${component} EXCLUDE_FROM_ALL)
    if(EXISTS "${PROJECT_SOURCE_DIR}/cmake/debian/${BRENMARK_PACKAGE}.lintian-overrides")
        install(FILES "cmake/debian/${BRENMARK_PACKAGE}.lintian-overrides" RENAME "${BRENMARK_PACKAGE}"
            DESTINATION "${CMAKE_INSTALL_DATADIR}/lintian/overrides" COMPONENT ${component} EXCLUDE_FROM_ALL)
    endif()
endfunction()

if(BRENMARK_GZIP)
    set(library_package "libbrenmark${PROJECT_VERSION_MAJOR}")
    set(purpose "Brenmark moves stored discrete element simulations out of a legacy binary\n"
        "family of files into one that is based on HDF5, and says of all that they\n"
        "hold what became of it.\n.\n")
    string(CONCAT purpose ${purpose})
    brenmark_package(library ${library_package} libs "converter of stored particle simulations, library"
        "${purpose}This is the library that programs are linked with.")
    set(CPACK_DEBIAN_LIBRARY_PACKAGE_MULTIARCH same)
    set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/cmake/debian/triggers")

    brenmark_package(development libbrenmark-dev libdevel "converter of stored particle simulations, development files"
        "${purpose}These are the headers for hosts and for plug-ins, the static library, and\n\
the files for CMake and pkg-config.")
    # What the header needs, and what the static library leaves to be linked.
    set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${library_package} (= ${BRENMARK_PACKAGE_VERSION}), \
qtbase5-dev, libhdf5-dev, zlib1g-dev, libisal-dev, libdeflate-dev")

    if(TARGET brenmark)
        brenmark_package(tool brenmark science "converter of stored particle simulations, command line"
            "${purpose}This is the command line: it converts decks and whole archives of them,\n\
compares, examines and shows them.")
        set(CPACK_DEBIAN_TOOL_PACKAGE_SUGGESTS "python3-brenmark, parallel, slurm-wlm, snakemake")
    endif()

    brenmark_package(python python3-brenmark python "reader of converted particle simulations for Python 3"
        "${purpose}This package reads what was converted as arrays of NumPy.")
    set(CPACK_DEBIAN_PYTHON_PACKAGE_ARCHITECTURE all)
    set(CPACK_DEBIAN_PYTHON_PACKAGE_SHLIBDEPS OFF)
    set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "python3 (>= 3.9), python3-numpy, python3-h5py")
    set(CPACK_DEBIAN_PYTHON_PACKAGE_RECOMMENDS brenmark)
    set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS python3-pandas)
    set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA
        "${PROJECT_SOURCE_DIR}/cmake/debian/postinst" "${PROJECT_SOURCE_DIR}/cmake/debian/prerm")
    # Elsewhere pip installs it; this is the folder of Debian's own packages.
    configure_file(cmake/debian/metadata.in "${PROJECT_BINARY_DIR}/package/METADATA" @ONLY)
    install(DIRECTORY python/brenmark DESTINATION lib/python3/dist-packages COMPONENT python EXCLUDE_FROM_ALL
        FILES_MATCHING PATTERN "*.py" PATTERN py.typed)
    install(FILES "${PROJECT_BINARY_DIR}/package/METADATA"
        DESTINATION "lib/python3/dist-packages/brenmark-${PROJECT_VERSION}.dist-info"
        COMPONENT python EXCLUDE_FROM_ALL)
endif()

include(CPack)
