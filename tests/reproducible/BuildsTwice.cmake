# Builds and installs the library from two copies of SOURCE_DIR, in directories of names of different lengths, without
# the compiler cache, and fails unless both installed trees have the same files with the same bytes.
set(ENV{CCACHE_DISABLE} 1)
file(REMOVE_RECURSE ${WORK_DIR})
foreach(copy IN ITEMS a another-one)
    set(dir ${WORK_DIR}/${copy})
    file(
        COPY ${SOURCE_DIR}/CMakeLists.txt ${SOURCE_DIR}/VexaBase ${SOURCE_DIR}/cmake ${SOURCE_DIR}/debugger
        DESTINATION ${dir}/source)
    execute_process(
        COMMAND
            ${CMAKE_COMMAND} -S ${dir}/source -B ${dir}/build -G ${GENERATOR} -DCMAKE_CXX_COMPILER=${COMPILER}
            -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr -DVEXABASE_BUILD_TESTS=OFF
            -DVEXABASE_BUILD_EXAMPLES=OFF
        COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
    execute_process(COMMAND ${CMAKE_COMMAND} --build ${dir}/build COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
    set(ENV{DESTDIR} ${dir}/installed)
    execute_process(COMMAND ${CMAKE_COMMAND} --install ${dir}/build COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
    file(GLOB_RECURSE files_${copy} LIST_DIRECTORIES false RELATIVE ${dir}/installed ${dir}/installed/*)
endforeach()

if(NOT files_a OR NOT files_a STREQUAL "${files_another-one}")
    message(FATAL_ERROR "The two builds install different files:\n${files_a}\n${files_another-one}")
endif()
foreach(file IN LISTS files_a)
    file(SHA256 ${WORK_DIR}/a/installed/${file} first)
    file(SHA256 ${WORK_DIR}/another-one/installed/${file} second)
    if(NOT first STREQUAL second)
        message(SEND_ERROR "The two builds differ in ${file}")
    endif()
endforeach()
