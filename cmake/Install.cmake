# cmake --install: headers for hosts and for plug-ins, both libraries, CMake package, pkg-config file, command line and
# man pages. The result can be moved: neither package names the prefix.

include(CMakePackageConfigHelpers)

set(package_folder "${CMAKE_INSTALL_LIBDIR}/cmake/Brenmark")
set(pkgconfig_folder "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

# Components are the Debian packages: library, development, tool.
install(TARGETS Brenmark EXPORT BrenmarkTargets LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    COMPONENT library NAMELINK_COMPONENT development)
install(FILES "$<TARGET_FILE:brenmark_internal>" DESTINATION "${CMAKE_INSTALL_LIBDIR}" RENAME libBrenmark.a
    COMPONENT development)
install(FILES src/api/data_converter.h src/api/export.h DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/Brenmark"
    COMPONENT development)
install(DIRECTORY include/brenmark DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT development)
install(EXPORT BrenmarkTargets NAMESPACE Brenmark:: DESTINATION "${package_folder}" COMPONENT development)

configure_package_config_file(cmake/BrenmarkConfig.cmake.in "${PROJECT_BINARY_DIR}/package/BrenmarkConfig.cmake"
    INSTALL_DESTINATION "${package_folder}" PATH_VARS CMAKE_INSTALL_LIBDIR CMAKE_INSTALL_INCLUDEDIR)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/package/BrenmarkConfigVersion.cmake"
    COMPATIBILITY SameMajorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/package/BrenmarkConfig.cmake" "${PROJECT_BINARY_DIR}/package/BrenmarkConfigVersion.cmake"
    DESTINATION "${package_folder}" COMPONENT development)

file(RELATIVE_PATH BRENMARK_PREFIX_FROM_PKGCONFIG "/prefix/${pkgconfig_folder}" "/prefix")
string(REGEX REPLACE "/$" "" BRENMARK_PREFIX_FROM_PKGCONFIG "${BRENMARK_PREFIX_FROM_PKGCONFIG}")
configure_file(cmake/Brenmark.pc.in "${PROJECT_BINARY_DIR}/package/Brenmark.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/package/Brenmark.pc" DESTINATION "${pkgconfig_folder}" COMPONENT development)

if(TARGET brenmark)
    install(TARGETS brenmark RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT tool)
    set(pages "${PROJECT_BINARY_DIR}/man1")
    find_program(BRENMARK_GZIP gzip)
    mark_as_advanced(BRENMARK_GZIP)
    add_custom_command(OUTPUT "${pages}.made"
        COMMAND "${CMAKE_COMMAND}" -D "TOOL=$<TARGET_FILE:brenmark>" -D "PAGE=${PROJECT_SOURCE_DIR}/docs/brenmark.1"
            -D "FOLDER=${pages}" -D "GZIP=${BRENMARK_GZIP}" -P "${PROJECT_SOURCE_DIR}/cmake/CommandPages.cmake"
        COMMAND "${CMAKE_COMMAND}" -E touch "${pages}.made"
        DEPENDS brenmark docs/brenmark.1 cmake/CommandPages.cmake VERBATIM)
    add_custom_target(manual_pages ALL DEPENDS "${pages}.made")
    install(DIRECTORY "${pages}" DESTINATION "${CMAKE_INSTALL_MANDIR}" COMPONENT tool)
    # Where each shell looks by itself; zsh in the one folder below /usr/local, and on Debian in the other below /usr.
    file(MAKE_DIRECTORY "${PROJECT_BINARY_DIR}/completion")
    foreach(shell bash zsh fish)
        set(script "${PROJECT_BINARY_DIR}/completion/${shell}")
        add_custom_command(OUTPUT "${script}" COMMAND "$<TARGET_FILE:brenmark>" completion ${shell} > "${script}"
            DEPENDS brenmark VERBATIM)
        list(APPEND completions "${script}")
    endforeach()
    add_custom_target(completions ALL DEPENDS ${completions})
    foreach(place "bash;bash-completion/completions/brenmark" "zsh;zsh/site-functions/_brenmark"
            "zsh;zsh/vendor-completions/_brenmark" "fish;fish/vendor_completions.d/brenmark.fish")
        list(GET place 0 shell)
        list(GET place 1 file)
        set(script "${PROJECT_BINARY_DIR}/completion/${shell}")
        cmake_path(GET file PARENT_PATH folder)
        cmake_path(GET file FILENAME name)
        install(FILES "${script}" DESTINATION "${CMAKE_INSTALL_DATADIR}/${folder}" RENAME "${name}" COMPONENT tool)
    endforeach()
endif()
