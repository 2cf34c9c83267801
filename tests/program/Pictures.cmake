# Draws the pictures of the documentation with the programs under PROGRAMS into the folder TO. With CHECK, into a folder of
# its own, and fails unless they are what is in TO.
cmake_minimum_required(VERSION 3.25)
get_filename_component(root "${CMAKE_CURRENT_LIST_DIR}/../.." ABSOLUTE)
set(folder "${TO}")
if(CHECK)
    set(folder "${CMAKE_CURRENT_BINARY_DIR}/pictures")
    file(MAKE_DIRECTORY "${folder}")
endif()

# draw(<picture> <program> <argument>...)
function(draw picture program)
    execute_process(
        COMMAND "${PROGRAMS}/${program}/${program}" ${ARGN} --quiet -o "${folder}/${picture}"
        WORKING_DIRECTORY "${root}/examples" COMMAND_ERROR_IS_FATAL ANY)
    if(CHECK)
        execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files "${folder}/${picture}" "${TO}/${picture}" RESULT_VARIABLE differs)
        if(differs)
            message(SEND_ERROR "${folder}/${picture} is not ${TO}/${picture}; scripts/pictures makes the latter anew")
        endif()
    endif()
endfunction()

draw(us-counties.svg faces data/us-counties.topo.json --title "The counties of the United States")
draw(house.svg journal journal/house.txt)
draw(time-zones.svg tour data/time-zones.tsp --seed 1 --generations 20)
