# Promise: an installed copy of the command brings its manual and its completions, where the programs that read
# them look for them, and as the command itself writes them.

foreach(file man|share/man/man1/qelmodels.1
             bash|share/bash-completion/completions/qelmodels
             zsh|share/zsh/site-functions/_qelmodels
             fish|share/fish/vendor_completions.d/qelmodels.fish)
    string(REGEX MATCH "([a-z]+)[|](.+)" matched ${file})
    execute_process(COMMAND ${PREFIX}/bin/qelmodels generate ${CMAKE_MATCH_1}
                    OUTPUT_VARIABLE written COMMAND_ERROR_IS_FATAL ANY)
    file(READ ${PREFIX}/${CMAKE_MATCH_2} installed)
    if(installed STREQUAL "" OR NOT installed STREQUAL written)
        message(FATAL_ERROR "${CMAKE_MATCH_2} is not what the command writes")
    endif()
endforeach()
