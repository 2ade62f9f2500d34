# An example on a page is a program that is compiled and run: the page has the file word for word, and what it
# prints below it.
file(READ ${PAGE} page)
file(READ ${SNIPPET} snippet)
string(FIND "${page}" "```cpp\n${snippet}```\n" place)
if(place EQUAL -1)
    message(FATAL_ERROR "${PAGE} does not contain ${SNIPPET} word for word in a cpp block")
endif()

execute_process(COMMAND ${PROGRAM} OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE "([^\n]+)\n" "    \\1\n" indented "${output}")
string(FIND "${page}" "It prints\n\n${indented}\n" place)
if(place EQUAL -1)
    message(FATAL_ERROR "${PAGE} does not say that the example prints\n${indented}")
endif()
