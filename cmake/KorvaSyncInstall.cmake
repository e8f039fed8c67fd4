# SPDX-FileCopyrightText: 2026 The korvasync developers
# SPDX-License-Identifier: LGPL-2.1-or-later

# How other projects find the installed library: a CMake package and a pkg-config file.

include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/KorvaSync)
set(Qt_VERSION_REQUIRED ${Qt${KORVASYNC_QT}_VERSION_MAJOR}.${Qt${KORVASYNC_QT}_VERSION_MINOR})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/KorvaSyncConfig.cmake.in
    ${PROJECT_BINARY_DIR}/KorvaSyncConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/KorvaSyncConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/KorvaSyncConfig.cmake
    ${PROJECT_BINARY_DIR}/KorvaSyncConfigVersion.cmake
    DESTINATION ${package_dir})
install(EXPORT KorvaSyncTargets NAMESPACE KorvaSync:: DESTINATION ${package_dir})

# Relative to the file itself, so that a tree can be moved or installed to another prefix.
file(RELATIVE_PATH pc_to_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" PC_PREFIX "\${pcfiledir}/${pc_to_prefix}")
cmake_path(APPEND PC_LIBDIR "\${prefix}" ${CMAKE_INSTALL_LIBDIR})
cmake_path(APPEND PC_INCLUDEDIR "\${prefix}" ${CMAKE_INSTALL_INCLUDEDIR})
configure_file(${PROJECT_SOURCE_DIR}/cmake/korvasync.pc.in
    ${PROJECT_BINARY_DIR}/korvasync.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/korvasync.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
