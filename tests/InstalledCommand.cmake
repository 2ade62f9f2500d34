# Promise: an installed copy of the command brings its manual and its completions, where the programs that read
# them look for them, and as the command itself writes them. The copy can be moved, shared libraries included.
#
# PREFIX  the copy
# BUILD   if given: the copy is made of this build folder at another place, and moved

if(BUILD)
    file(REMOVE_RECURSE ${PREFIX} ${PREFIX}-before)
    execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${PREFIX}-before
                    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
    file(RENAME ${PREFIX}-before ${PREFIX})
endif()
# Whoever runs the tests may have told the linker of another copy.
unset(ENV{LD_LIBRARY_PATH})
unset(ENV{DYLD_LIBRARY_PATH})

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
