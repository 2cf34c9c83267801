# Debian packages, made by cpack: libvexabase1, libvexabase-dev and vexabase-tools. scripts/package configures a build for
# them, with Debian's own flags, and checks what comes out.

get_target_property(vexabase_soversion VexaBase SOVERSION)
set(vexabase_debian_revision 1)
set(vexabase_debian_version ${PROJECT_VERSION}-${vexabase_debian_revision})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vexabase)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each package has its own
set(CPACK_PACKAGE_VENDOR "the VexaBase authors")
set(CPACK_PACKAGE_CONTACT "VexaBase maintainers <maintainers@vexabase.invalid>")
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${vexabase_debian_revision})
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SOURCE vexabase)

# vexabase_debian_package(<component> <name> <section> <description, its first line the short one>)
macro(vexabase_debian_package component name section description)
    string(TOUPPER ${component} upper)
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name})
    set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section})
    set(CPACK_COMPONENT_${upper}_DESCRIPTION "${description}")
    # What Debian wants in each package.
    set(doc_dir ${CMAKE_INSTALL_DATADIR}/doc/${name})
    install(FILES ${PROJECT_SOURCE_DIR}/cmake/debian/copyright DESTINATION ${doc_dir} COMPONENT ${component}
            EXCLUDE_FROM_ALL)
    install(FILES ${PROJECT_BINARY_DIR}/debian/changelog.gz ${PROJECT_BINARY_DIR}/debian/changelog.Debian.gz
            DESTINATION ${doc_dir} COMPONENT ${component} EXCLUDE_FROM_ALL)
    install(
        FILES ${PROJECT_SOURCE_DIR}/cmake/debian/lintian-overrides
        DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
        RENAME ${name}
        COMPONENT ${component} EXCLUDE_FROM_ALL)
endmacro()

set(vexabase_about
    "VexaBase is a foundation library that depends on nothing but the C++ standard
library: arrays, lists and queues behind one interface with a current position,
wide strings, binary streams, class descriptors, an event channel, a genetic
algorithm and planar graphs with face tracing.
.")
vexabase_debian_package(
    runtime libvexabase${vexabase_soversion} libs
    "containers, strings, events and planar graphs in C++ (library)
${vexabase_about}
This package has the shared library.")
vexabase_debian_package(
    development libvexabase-dev libdevel
    "containers, strings, events and planar graphs in C++ (development)
${vexabase_about}
This package has the headers, the CMake package, the pkg-config module and
pretty-printers for gdb.")
# cpack would call ldconfig from scripts of the package, where Debian has a trigger; so it is told of no shared library.
# scripts/package works out what the library depends on, versions included.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS "libc6, libgcc-s1, libstdc++6")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/debian/shlibs ${PROJECT_BINARY_DIR}/debian/triggers)
file(WRITE ${PROJECT_BINARY_DIR}/debian/triggers "activate-noawait ldconfig\n")
file(WRITE ${PROJECT_BINARY_DIR}/debian/shlibs
     "libVexaBase ${vexabase_soversion} libvexabase${vexabase_soversion} (>= ${PROJECT_VERSION})\n")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libvexabase${vexabase_soversion} (= ${vexabase_debian_version})")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "gdb, pkg-config")

if(VEXABASE_INSTALL_TOOLS)
    list(APPEND CPACK_COMPONENTS_ALL tools)
    vexabase_debian_package(
        tools vexabase-tools utils
        "map faces, drawings by script and round tours (tools of VexaBase)
${vexabase_about}
This package has its example programs: faces traces the areas of a map out of
its bare border lines, journal edits a drawing by a script with undo and redo,
tour looks for the shortest closed tour through cities.")
    set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})
    set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS
        "libvexabase${vexabase_soversion} (>= ${PROJECT_VERSION}), tzdata")
endif()

include(CPack)
