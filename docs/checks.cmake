# Writes the page of checks from the KY_CHECKs of the library:
#
#     cmake -P docs/checks.cmake
#
# With OUTPUT it goes there, and with EXPECTED the script fails unless that file is the same. With TESTS, the folder of
# the tests, it fails unless a file of death tests there expects each check's operation and message.
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

# All literals of the files of death tests of a folder, those that were broken into lines in one piece.
function(read_death_tests folder result)
    file(GLOB files ${TESTS}/${folder}/*.cpp)
    set(texts "")
    foreach(file IN LISTS files)
        file(READ ${file} text)
        if(text MATCHES "EXPECT_DEATH")
            string(REGEX REPLACE "\"[ \n]+\"" "" text "${text}")
            string(REPLACE "\\" "" text "${text}")
            string(APPEND texts "${text}")
        endif()
    endforeach()
    set(${result} "${texts}" PARENT_SCOPE)
endfunction()

foreach(folder IN ITEMS containers string stream rx event task ga graph)
    file(GLOB sources ${root}/VexaBase/${folder}/*.h ${root}/VexaBase/${folder}/*.cpp)
    set(rows "")
    if(DEFINED TESTS)
        read_death_tests(${folder} death_tests)
    endif()
    foreach(source IN LISTS sources)
        file(READ ${source} text)
        string(REGEX MATCHALL "KY_CHECK\\([^;]*" checks "${text}")
        foreach(check IN LISTS checks)
            # The two literals: the operation, and what is wrong, less the values in parentheses.
            if(NOT check MATCHES "\"([A-Za-z_]+[^\" ]*)\",[ \n]*\"([^\"(]*[^\"( ])[^\"]*\"")
                message(FATAL_ERROR "${source}: no operation and message in\n${check}")
            endif()
            set(operation ${CMAKE_MATCH_1})
            set(message ${CMAKE_MATCH_2})
            if(DEFINED TESTS)
                string(FIND "${death_tests}" "${operation}: ${message}" position)
                if(position EQUAL -1)
                    message(SEND_ERROR "no test in ${TESTS}/${folder} expects \"${operation}: ${message}\"")
                endif()
            endif()
            list(APPEND rows "| `${operation}` | ${message} |")
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
