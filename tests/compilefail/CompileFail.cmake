# Compiles SOURCE twice, with the flags of the whole build, FLAGS. As it is, it must be refused, and of each line
#
#     // expect: <regular expression> | <name>
#
# the compiler must say the sentence and name what it is about. With FIXED defined it must compile, which shows
# that nothing but the mistakes is refused. A folder of the source's name holds headers that it finds before others.
file(STRINGS ${SOURCE} expectations REGEX "^ *// expect: ")
if(NOT expectations)
    message(FATAL_ERROR "${SOURCE} expects nothing")
endif()
# Without the source's own lines in its output, a name in it was said by the compiler.
execute_process(COMMAND ${COMPILER} --version OUTPUT_VARIABLE version)
if(version MATCHES "clang")
    set(noCaret -fno-caret-diagnostics)
else()
    set(noCaret -fno-diagnostics-show-caret)
endif()
separate_arguments(FLAGS UNIX_COMMAND "${FLAGS}")
cmake_path(REMOVE_EXTENSION SOURCE OUTPUT_VARIABLE headers)
set(compile ${COMPILER} ${FLAGS} -std=c++20 ${noCaret} -fsyntax-only -I${headers} -I${INCLUDE} -DQELMODELS_STATIC)

execute_process(COMMAND ${compile} ${SOURCE} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(result EQUAL 0)
    message(FATAL_ERROR "${SOURCE} compiles, and should not")
endif()
foreach(expectation IN LISTS expectations)
    if(NOT expectation MATCHES "// expect: (.+) \\| (.+)$")
        message(FATAL_ERROR "${SOURCE}: not '// expect: <regular expression> | <name>': ${expectation}")
    endif()
    foreach(expected "${CMAKE_MATCH_1}" "${CMAKE_MATCH_2}")
        if(NOT output MATCHES "${expected}")
            message(FATAL_ERROR "${SOURCE} is refused without the expected '${expected}':\n${output}")
        endif()
    endforeach()
endforeach()

execute_process(COMMAND ${compile} -DFIXED ${SOURCE}
                RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "${SOURCE} is refused without its mistakes too:\n${output}")
endif()
