# Compiles SOURCE twice. As it stands it must be refused with the message that its first line expects,
# `// expect: <regular expression>`; with FIXED defined it must compile, which shows that nothing but the
# mistake is refused.
file(STRINGS ${SOURCE} firstLine LIMIT_COUNT 1)
if(NOT firstLine MATCHES "^// expect: (.+)$")
    message(FATAL_ERROR "${SOURCE}: the first line is not '// expect: <regular expression>'")
endif()
set(expected "${CMAKE_MATCH_1}")
set(compile ${COMPILER} -std=c++20 -fsyntax-only -I${INCLUDE} -DQELMODELS_STATIC)

execute_process(COMMAND ${compile} ${SOURCE} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(result EQUAL 0)
    message(FATAL_ERROR "${SOURCE} compiles, and should not")
endif()
if(NOT output MATCHES "${expected}")
    message(FATAL_ERROR "${SOURCE} is refused without the expected '${expected}':\n${output}")
endif()

execute_process(COMMAND ${compile} -DFIXED ${SOURCE}
                RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "${SOURCE} is refused without its mistake too:\n${output}")
endif()
