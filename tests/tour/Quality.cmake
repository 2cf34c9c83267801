# Solves the TSPLIB instance FILE with PROGRAM under ten seeds, a minute at most each, and fails unless nine of the tours are
# short enough: within 1 % of BEST up to 150 cities, within 3 % above.
set(good 0)
foreach(seed RANGE 1 10)
    execute_process(
        COMMAND ${PROGRAM} ${FILE} --seed ${seed} --time-limit 60 --target ${BEST}
        OUTPUT_VARIABLE output
        RESULT_VARIABLE status)
    if(NOT status EQUAL 0 OR NOT output MATCHES "([0-9]+) cities, length ([0-9]+),")
        message(FATAL_ERROR "${FILE}: ${output}")
    endif()
    set(percent 1)
    if(CMAKE_MATCH_1 GREATER 150)
        set(percent 3)
    endif()
    math(EXPR limit "${BEST} * (100 + ${percent}) / 100")
    if(CMAKE_MATCH_2 LESS_EQUAL limit)
        math(EXPR good "${good} + 1")
    endif()
    message(STATUS "seed ${seed}: ${output}")
endforeach()
if(good LESS 9)
    message(FATAL_ERROR "${good} of 10 tours of ${FILE} are within ${percent} % of ${BEST}")
endif()
