# How this project's own targets are compiled: compiler cache, sanitizers, coverage, warnings.

if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    find_program(VEXABASE_CCACHE ccache)
    mark_as_advanced(VEXABASE_CCACHE)
    if(VEXABASE_CCACHE)
        # Relative to the checkout, so that another clone of it finds what this one compiled.
        set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}
                                        CCACHE_NOHASHDIR=true ${VEXABASE_CCACHE})
    endif()
endif()

# Sanitizers and coverage hold for everything below this point: an instrumented library needs instrumented callers.
if(VEXABASE_SANITIZE)
    add_compile_options(-fsanitize=${VEXABASE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${VEXABASE_SANITIZE})
endif()
if(VEXABASE_COVERAGE)
    add_compile_options(--coverage -fprofile-update=atomic)
    add_link_options(--coverage)
endif()

# Gives a target the project's warnings, as errors under VEXABASE_WERROR.
function(vexabase_warnings target)
    target_compile_options(
        ${target}
        PRIVATE -Wall
                -Wextra
                -Wpedantic
                -Wshadow
                -Wconversion
                -Wnon-virtual-dtor
                -Woverloaded-virtual
                $<$<BOOL:${VEXABASE_WERROR}>:-Werror>)
endfunction()
