# What every target of the project is compiled with.

if(PROJECT_IS_TOP_LEVEL)
    set(CMAKE_CXX_EXTENSIONS OFF)
    set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
    if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
        set(CMAKE_BUILD_TYPE Release)
    endif()
    find_program(ccache ccache)
    if(ccache AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
        set(CMAKE_CXX_COMPILER_LAUNCHER ${ccache})
    endif()
endif()
if(NOT DEFINED CMAKE_CXX_STANDARD)
    set(CMAKE_CXX_STANDARD 20)
endif()

# Sanitizers and coverage work on a whole program, hence for all targets alike.
if(QELMODELS_SANITIZE)
    add_compile_options(-fsanitize=${QELMODELS_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${QELMODELS_SANITIZE})
endif()
if(QELMODELS_COVERAGE)
    add_compile_options(--coverage)
    add_link_options(--coverage)
endif()

# Sources are found, not listed: a folder is a layer, and every source in it belongs to that layer.
function(qelmodels_sources variable)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "EXCLUDE" "")
    file(GLOB sources CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} ${arg_UNPARSED_ARGUMENTS})
    if(arg_EXCLUDE)
        list(FILTER sources EXCLUDE REGEX "${arg_EXCLUDE}")
    endif()
    set(${variable} ${sources} PARENT_SCOPE)
endfunction()

function(qelmodels_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_SYSTEM_PROCESSOR MATCHES "^arm")
        # On 32-bit ARM, g++ notes at every call for which it uses other registers than g++ 6 did.
        target_compile_options(${target} PRIVATE -Wno-psabi)
    endif()
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        # g++ 12 sees overlapping copies in std::string itself, where a literal is assigned.
        target_compile_options(${target} PRIVATE -Wno-restrict)
    endif()
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND CMAKE_CXX_COMPILER_VERSION VERSION_GREATER_EQUAL 15)
        # clang 15 and later see that std::stable_sort of libstdc++ 12 calls what libstdc++ says is deprecated.
        target_compile_options(${target} PRIVATE -Wno-deprecated-declarations)
    endif()
    if(CMAKE_CXX_COMPILER_ID MATCHES "Clang" AND NOT CMAKE_CXX_COMPILER_ID STREQUAL "AppleClang"
       AND CMAKE_CXX_COMPILER_VERSION VERSION_GREATER_EQUAL 13)
        target_compile_options(${target} PRIVATE -Wreserved-identifier -Wreserved-macro-identifier)
    endif()
endfunction()

# qelmodels_quick_build(target [APART REGEX] HEADERS...): for builds that are made to run the tests once. Headers are
# compiled once, and sources joined, save those that use the same local names. `debug` and `bench` do without, and
# show that every source includes what it needs.
function(qelmodels_quick_build target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "APART" "")
    if(NOT QELMODELS_QUICK_BUILD)
        return()
    endif()
    target_precompile_headers(${target} PRIVATE ${arg_UNPARSED_ARGUMENTS})
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 12)
    if(arg_APART)
        get_target_property(sources ${target} SOURCES)
        list(FILTER sources INCLUDE REGEX "${arg_APART}")
        set_source_files_properties(${sources} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
    endif()
endfunction()

# A library that is exported: hidden visibility, the version in its name, includes relative to the root.
function(qelmodels_library target)
    qelmodels_warnings(${target})
    target_compile_features(${target} PUBLIC cxx_std_20)
    target_include_directories(${target} PUBLIC
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
        $<INSTALL_INTERFACE:${QELMODELS_INCLUDEDIR}>)
    set_target_properties(${target} PROPERTIES
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
    target_compile_definitions(${target} PRIVATE QELMODELS_BUILDING)
    target_compile_options(${target} PRIVATE ${QELMODELS_LIBRARY_OPTIONS})
    if(NOT QELMODELS_RTTI)
        target_compile_options(${target} PRIVATE -fno-rtti)
    endif()
    # A shared library that lacks a symbol is not linked. (The sanitizers' own come with the program.)
    if(CMAKE_SYSTEM_NAME STREQUAL "Linux" AND NOT QELMODELS_SANITIZE)
        target_link_options(${target} PRIVATE LINKER:--no-undefined)
    endif()
endfunction()

# Headers are installed into a folder of their version, so that two versions can be installed side by side and
# the short folder name JSON meets no other.
set(QELMODELS_INCLUDEDIR
    ${CMAKE_INSTALL_INCLUDEDIR}/qelmodels-${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
