# What is installed: headers, library, CMake package, pkg-config module, gdb's printers. The copy may be moved: the first
# two find it by their own place; gdb goes by the library's.

include(CMakePackageConfigHelpers)

set(vexabase_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/VexaBase)
set(vexabase_pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(
    TARGETS VexaBase
    EXPORT VexaBaseTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(
    DIRECTORY ${PROJECT_SOURCE_DIR}/VexaBase/
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/VexaBase
    COMPONENT development
    FILES_MATCHING
    PATTERN "*.h")

install(
    EXPORT VexaBaseTargets
    NAMESPACE VexaBase::
    DESTINATION ${vexabase_package_dir}
    COMPONENT development)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/VexaBaseConfig.cmake.in
                              ${PROJECT_BINARY_DIR}/VexaBaseConfig.cmake INSTALL_DESTINATION ${vexabase_package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/VexaBaseConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/VexaBaseConfig.cmake ${PROJECT_BINARY_DIR}/VexaBaseConfigVersion.cmake
        DESTINATION ${vexabase_package_dir} COMPONENT development)

file(RELATIVE_PATH vexabase_prefix_from_pc ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
file(RELATIVE_PATH vexabase_libdir ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH vexabase_includedir ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
set(vexabase_pc_checked "")
if(VEXABASE_CHECKED)
    set(vexabase_pc_checked " -DKY_CHECKED=1")
endif()
configure_file(${CMAKE_CURRENT_LIST_DIR}/VexaBase.pc.in ${PROJECT_BINARY_DIR}/VexaBase.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/VexaBase.pc DESTINATION ${vexabase_pkgconfig_dir} COMPONENT development)

# gdb looks for the loader under the real name of the library; the loader finds the printers by its own place.
install(FILES ${PROJECT_SOURCE_DIR}/debugger/vexabase_printers.py DESTINATION ${CMAKE_INSTALL_DATADIR}/vexabase/gdb
        COMPONENT development)
if(BUILD_SHARED_LIBS)
    get_target_property(vexabase_file_version VexaBase VERSION)
    # The prefix is that of the moment of installation.
    install(
        FILES ${PROJECT_SOURCE_DIR}/debugger/libVexaBase-gdb.py
        DESTINATION ${CMAKE_INSTALL_DATADIR}/gdb/auto-load\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}
        RENAME libVexaBase.so.${vexabase_file_version}-gdb.py
        COMPONENT development)
endif()
