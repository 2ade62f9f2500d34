# The README's example is a program that is compiled and run: the file stands in the README word for word, and
# what it prints stands below it.
file(READ ${README} readme)
file(READ ${SNIPPET} snippet)
string(FIND "${readme}" "```cpp\n${snippet}```\n" place)
if(place EQUAL -1)
    message(FATAL_ERROR "README.md does not contain examples/readme.cpp word for word in a cpp block")
endif()

execute_process(COMMAND ${PROGRAM} OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE "([^\n]+)\n" "    \\1\n" indented "${output}")
string(FIND "${readme}" "It prints\n\n${indented}\n" place)
if(place EQUAL -1)
    message(FATAL_ERROR "README.md does not say that the example prints\n${indented}")
endif()
