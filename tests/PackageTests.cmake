# Builds small applications against the library in every way that it can be had: found by CMake, found by
# pkg-config, or as a folder of the application's own build; static and shared; with and without run-time
# type information on either side; in both standards, and without a warning.
#
# The copies come from three builds of the library: this one, and the two that the add_subdirectory
# consumers make in any case. The one of C++23 precompiles nothing, so that each source and the header that it
# begins with are compiled in that standard too.

if(BUILD_SHARED_LIBS OR NOT QELMODELS_RTTI OR NOT QELMODELS_JSON)
    message(FATAL_ERROR "QELMODELS_PACKAGE_TESTS starts from a static build with JSON and run-time types")
endif()

set(consumers ${CMAKE_CURRENT_SOURCE_DIR}/consumer)
set(copies ${CMAKE_CURRENT_BINARY_DIR}/packages)

# consumer_test(NAME folder SETTINGS...): configures, builds and runs the project consumer/<folder>.
function(consumer_test name folder)
    add_test(NAME ${name}
             COMMAND ${CMAKE_CTEST_COMMAND}
                     --build-and-test ${consumers}/${folder} ${copies}/${name}
                     --build-generator ${CMAKE_GENERATOR} --build-noclean
                     --build-options -DCMAKE_CXX_COMPILER=${CMAKE_CXX_COMPILER}
                                     -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0
                                     -DCMAKE_COMPILE_WARNING_AS_ERROR=ON ${ARGN}
                     --test-command ${CMAKE_CTEST_COMMAND} --output-on-failure --no-tests=error)
    # ctest --build-and-test starts a build of its own on all cores.
    set_tests_properties(${name} PROPERTIES TIMEOUT 900 PROCESSORS 2)
endfunction()

# installed_copy(copy BUILD_FOLDER [test that makes the build]): installs to packages/<copy>.
function(installed_copy copy build)
    set(prefix ${copies}/${copy})
    add_test(NAME package.${copy}.install COMMAND ${CMAKE_COMMAND} --install ${build} --prefix ${prefix})
    set_tests_properties(package.${copy}.install PROPERTIES
        FIXTURES_SETUP installed-${copy} FIXTURES_REQUIRED "${ARGN}")
endfunction()

# consume(copy folder standard rtti): one application against an installed copy.
function(consume copy folder standard rtti)
    set(name package.${copy}.${folder})
    consumer_test(${name} ${folder} -DCMAKE_PREFIX_PATH=${copies}/${copy}
                  -DCMAKE_CXX_STANDARD=${standard} -DCONSUMER_RTTI=${rtti})
    set_tests_properties(${name} PROPERTIES FIXTURES_REQUIRED installed-${copy})
endfunction()

# build_within(copy standard rtti SETTINGS...): an application that builds the library itself.
function(build_within copy standard rtti)
    set(name package.${copy}.add_subdirectory)
    consumer_test(${name} add_subdirectory -DQELMODELS_SOURCE=${PROJECT_SOURCE_DIR} -DQELMODELS_INSTALL=ON
                  -DCMAKE_CXX_STANDARD=${standard} -DCONSUMER_RTTI=${rtti} ${ARGN})
    set_tests_properties(${name} PROPERTIES FIXTURES_SETUP built-${copy})
    installed_copy(${copy} ${copies}/${name} built-${copy})
endfunction()

installed_copy(static ${CMAKE_BINARY_DIR})
build_within(shared 20 OFF -DBUILD_SHARED_LIBS=ON -DQELMODELS_QUICK_BUILD=ON)
build_within(no-rtti 23 ON -DBUILD_SHARED_LIBS=OFF -DQELMODELS_RTTI=OFF)

#       copy     consumer      standard  run-time types
consume(static   find_package  20        OFF)
consume(static   pkg_config    23        ON)
consume(shared   find_package  23        ON)
consume(shared   pkg_config    20        OFF)
consume(no-rtti  find_package  20        ON)
consume(no-rtti  pkg_config    23        OFF)

if(TARGET qelmodels)
    add_test(NAME package.static.command
             COMMAND ${CMAKE_COMMAND} -DPREFIX=${copies}/static -P ${CMAKE_CURRENT_SOURCE_DIR}/InstalledCommand.cmake)
    set_tests_properties(package.static.command PROPERTIES FIXTURES_REQUIRED installed-static)
endif()

add_test(NAME package.static.headers
         COMMAND ${CMAKE_COMMAND} -DSOURCE=${PROJECT_SOURCE_DIR} -DINSTALLED=${copies}/static/${QELMODELS_INCLUDEDIR}
                 -P ${CMAKE_CURRENT_SOURCE_DIR}/InstalledHeaders.cmake)
set_tests_properties(package.static.headers PROPERTIES FIXTURES_REQUIRED installed-static)

# The headers as an application sees them that is stricter with itself than this project is with it, by every
# compiler that is supported and installed.
foreach(compiler g++-12 clang++-14 clang++-16 clang++-19 clang++-22)
    set(name package.static.warnings.${compiler})
    find_program(QELMODELS_${compiler} ${compiler})
    mark_as_advanced(QELMODELS_${compiler})
    if(NOT QELMODELS_${compiler})
        skipped_test(${name} ${compiler})
    else()
        add_test(NAME ${name}
                 COMMAND ${PROJECT_SOURCE_DIR}/scripts/check_headers.sh ${QELMODELS_${compiler}}
                         ${copies}/static/${QELMODELS_INCLUDEDIR})
        set_tests_properties(${name} PROPERTIES FIXTURES_REQUIRED installed-static)
    endif()
endforeach()

# installed_files(name COMPONENTS... | GENERATOR): what is installed, component by component, and packages.
function(installed_files name)
    add_test(NAME package.static.${name}
             COMMAND ${CMAKE_COMMAND} -DBUILD=${CMAKE_BINARY_DIR} "-DINSTALLED=${ARGN}" -DFOLDER=${copies}/${name}
                     -DLIBDIR=${CMAKE_INSTALL_LIBDIR} -DINCLUDEDIR=${QELMODELS_INCLUDEDIR} -DCONFIG=${CMAKE_BUILD_TYPE}
                     -P ${CMAKE_CURRENT_SOURCE_DIR}/InstalledFiles.cmake)
endfunction()

installed_files(core core)
set_tests_properties(package.static.core PROPERTIES FIXTURES_SETUP installed-core)
installed_files(JSON JSON)
if(TARGET qelmodels)
    installed_files(tool tool)
    installed_files(tar TGZ)
    if(DEB IN_LIST QELMODELS_PACKAGES AND QELMODELS_DPKG_SHLIBDEPS AND QELMODELS_FILE)
        installed_files(deb DEB)
    else()
        skipped_test(package.static.deb "dpkg-deb, dpkg-shlibdeps or file")
    endif()
endif()

# asks(name COMPONENTS OPTIONAL answer): what CMake says to one who asks the copy that has the core alone.
function(asks name components optional answer)
    add_test(NAME package.core.${name}
             COMMAND ${CMAKE_COMMAND} -S ${consumers}/missing_component -B ${copies}/package.core.${name}
                     -DCMAKE_PREFIX_PATH=${copies}/core -DCOMPONENTS=${components} -DOPTIONAL=${optional})
    set_tests_properties(package.core.${name} PROPERTIES
        FIXTURES_REQUIRED installed-core PASS_REGULAR_EXPRESSION ${answer})
endfunction()

asks(missing JSON "" "CMake Error.*component JSON of QELModels is not installed.*-DQELMODELS_JSON=ON.*QELModels-JSON")
asks(unknown tool "" "CMake Error.*QELModels has no component tool: there is JSON\\.")
asks(optional "" JSON "JSON: FALSE.*Generating done")

add_test(NAME package.shared.symbols
         COMMAND ${PROJECT_SOURCE_DIR}/scripts/exported_symbols.sh
                 ${copies}/package.shared.add_subdirectory/qelmodels)
set_tests_properties(package.shared.symbols PROPERTIES FIXTURES_REQUIRED built-shared)
