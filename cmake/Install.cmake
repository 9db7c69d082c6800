# cmake --install: headers for hosts and for plug-ins, both libraries, CMake package, pkg-config file, command line and man page. The result can be moved:
# neither package names the prefix.

include(CMakePackageConfigHelpers)

set(package_folder "${CMAKE_INSTALL_LIBDIR}/cmake/Brenmark")
set(pkgconfig_folder "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

install(TARGETS Brenmark EXPORT BrenmarkTargets LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}")
install(FILES "$<TARGET_FILE:brenmark_internal>" DESTINATION "${CMAKE_INSTALL_LIBDIR}" RENAME libBrenmark.a)
install(FILES src/api/data_converter.h src/api/export.h DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/Brenmark")
install(DIRECTORY include/brenmark DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
install(EXPORT BrenmarkTargets NAMESPACE Brenmark:: DESTINATION "${package_folder}")

configure_package_config_file(cmake/BrenmarkConfig.cmake.in "${PROJECT_BINARY_DIR}/package/BrenmarkConfig.cmake"
    INSTALL_DESTINATION "${package_folder}" PATH_VARS CMAKE_INSTALL_LIBDIR CMAKE_INSTALL_INCLUDEDIR)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/package/BrenmarkConfigVersion.cmake"
    COMPATIBILITY SameMajorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/package/BrenmarkConfig.cmake" "${PROJECT_BINARY_DIR}/package/BrenmarkConfigVersion.cmake"
    DESTINATION "${package_folder}")

file(RELATIVE_PATH BRENMARK_PREFIX_FROM_PKGCONFIG "/prefix/${pkgconfig_folder}" "/prefix")
string(REGEX REPLACE "/$" "" BRENMARK_PREFIX_FROM_PKGCONFIG "${BRENMARK_PREFIX_FROM_PKGCONFIG}")
configure_file(cmake/Brenmark.pc.in "${PROJECT_BINARY_DIR}/package/Brenmark.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/package/Brenmark.pc" DESTINATION "${pkgconfig_folder}")

if(TARGET brenmark)
    install(TARGETS brenmark RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
    install(FILES docs/brenmark.1 DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
endif()
