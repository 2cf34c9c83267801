# Writes the page of checks from the KY_CHECKs of the library:
#
#     cmake -P docs/checks.cmake
#
# With OUTPUT it goes there, and with EXPECTED the script fails unless that file is the same.
cmake_minimum_required(VERSION 3.25)

set(root ${CMAKE_CURRENT_LIST_DIR}/..)
if(NOT DEFINED OUTPUT)
    set(OUTPUT ${CMAKE_CURRENT_LIST_DIR}/checks.md)
endif()

set(page
    "# All checks {#checks}

What a checked build stops at, by subsystem. The line on standard error adds the values that broke the condition. This
page is made from the library's sources by `cmake -P docs/checks.cmake`.
")

foreach(folder IN ITEMS containers string stream rx event task ga graph)
    file(GLOB sources ${root}/VexaBase/${folder}/*.h ${root}/VexaBase/${folder}/*.cpp)
    set(rows "")
    foreach(source IN LISTS sources)
        file(READ ${source} text)
        string(REGEX MATCHALL "KY_CHECK\\([^;]*" checks "${text}")
        foreach(check IN LISTS checks)
            # The two literals: the operation, and what is wrong, less the values in parentheses.
            if(NOT check MATCHES "\"([A-Za-z_]+[^\" ]*)\",[ \n]*\"([^\"(]*[^\"( ])[^\"]*\"")
                message(FATAL_ERROR "${source}: no operation and message in\n${check}")
            endif()
            list(APPEND rows "| `${CMAKE_MATCH_1}` | ${CMAKE_MATCH_2} |")
        endforeach()
    endforeach()
    list(SORT rows)
    list(REMOVE_DUPLICATES rows)
    if(rows)
        list(JOIN rows "\n" rows)
        string(APPEND page "\n## ${folder}\n\n| operation | stops at |\n|---|---|\n${rows}\n")
    endif()
endforeach()

file(WRITE ${OUTPUT} "${page}")
if(DEFINED EXPECTED)
    execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${OUTPUT} ${EXPECTED} RESULT_VARIABLE differs)
    if(differs)
        message(FATAL_ERROR "${EXPECTED} is not up to date: cmake -P docs/checks.cmake writes it")
    endif()
endif()
