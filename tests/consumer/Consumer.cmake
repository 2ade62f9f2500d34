# What the three consumers share: the program, and how an application may choose to compile it.
enable_testing()
option(CONSUMER_RTTI "Compile the application with run-time type information" ON)

function(consumer_program name source)
    add_executable(${name} ${source})
    target_compile_options(${name} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
    if(NOT CONSUMER_RTTI)
        target_compile_options(${name} PRIVATE -fno-rtti)
    endif()
    target_link_libraries(${name} PRIVATE ${ARGN})
    add_test(NAME ${name} COMMAND ${name})
endfunction()
