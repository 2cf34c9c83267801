# The example programs as tools to install: each with a man page made from its --help, and what they are shown on.

find_program(VEXABASE_HELP2MAN help2man REQUIRED)
mark_as_advanced(VEXABASE_HELP2MAN)

# vexabase_install_tool(<target> <what it does>)
function(vexabase_install_tool target what)
    if(NOT TARGET ${target})
        message(FATAL_ERROR "The tool ${target} is not built: something that it needs was not found")
    endif()
    set(page ${PROJECT_BINARY_DIR}/man/${target}.1)
    add_custom_command(
        OUTPUT ${page}.gz
        COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/man
        COMMAND ${CMAKE_COMMAND} -E env LC_ALL=C.UTF-8 ${VEXABASE_HELP2MAN} --no-info --name=${what}
                "--source=VexaBase ${PROJECT_VERSION}" --manual=VexaBase --output=${page} ./$<TARGET_FILE_NAME:${target}>
        COMMAND gzip -9nf ${page}
        WORKING_DIRECTORY $<TARGET_FILE_DIR:${target}>
        DEPENDS ${target}
        VERBATIM)
    add_custom_target(${target}_man_page ALL DEPENDS ${page}.gz)
    install(TARGETS ${target} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
    install(FILES ${page}.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
endfunction()

vexabase_install_tool(faces "trace the faces of a map out of its border lines, and draw them")
vexabase_install_tool(journal "edit a small drawing by a script")
vexabase_install_tool(tour "look for the shortest closed tour through cities")
install(
    FILES ${PROJECT_SOURCE_DIR}/examples/data/us-counties.topo.json ${PROJECT_SOURCE_DIR}/examples/data/time-zones.tsp
          ${PROJECT_SOURCE_DIR}/examples/journal/house.txt
    DESTINATION ${CMAKE_INSTALL_DATADIR}/vexabase
    COMPONENT tools)
