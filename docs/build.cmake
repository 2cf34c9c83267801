# Builds the guide and the reference into the folder OUTPUT; whatever Doxygen finds wrong fails it.
#
#     cmake -D OUTPUT=build/docs -P docs/build.cmake
cmake_minimum_required(VERSION 3.25)

get_filename_component(root ${CMAKE_CURRENT_LIST_DIR} DIRECTORY)
get_filename_component(output ${OUTPUT} ABSOLUTE)
set(parts ${output}.parts)
file(REMOVE_RECURSE ${output} ${parts})
file(MAKE_DIRECTORY ${output} ${parts})

function(run output_file)
    execute_process(
        COMMAND ${ARGN}
        WORKING_DIRECTORY ${root}
        OUTPUT_FILE ${output_file} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# What the pages take in that is made from something else: the table of the cursor from what its program prints, snippets
# of a program, and the figures last measured, if there are any.
run(${parts}/cursor.html awk -f docs/cursor.awk docs/programs/cursor.out)
run(${parts}/surprises.snippets.cpp awk -f docs/snippets.awk docs/programs/surprises.cpp)
file(READ ${root}/docs/performance.md performance)
if(EXISTS ${root}/docs/performance/bench.md)
    file(COPY ${root}/docs/performance/bench.svg DESTINATION ${parts})
    file(READ ${root}/docs/performance/bench.md figures)
    string(APPEND performance "\n## Measured\n\n\\image html bench.svg \"The library beside the best peer\"\n\n${figures}")
endif()
file(WRITE ${parts}/performance.md "${performance}")

file(STRINGS ${root}/CMakeLists.txt version REGEX "^    VERSION [0-9.]+$")
string(REGEX MATCH "[0-9.]+" version "${version}")
file(READ ${root}/docs/Doxyfile settings)
file(
    WRITE ${parts}/Doxyfile
    "${settings}
PROJECT_NUMBER    = ${version}
OUTPUT_DIRECTORY  = \"${output}\"
INPUT            += \"${parts}\"
EXAMPLE_PATH     += \"${parts}\"
IMAGE_PATH       += \"${parts}\"
STRIP_FROM_PATH  += \"${parts}\"
")
run(${parts}/log doxygen ${parts}/Doxyfile)
