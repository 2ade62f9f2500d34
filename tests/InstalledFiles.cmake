# Promise: an installed component has the files that installed-files.txt lists for it, and a package has those of all
# components; neither has any other.
#
# BUILD      the build folder of a static library
# INSTALLED  the components to install, or the generator that `cpack` uses
# FOLDER     where the copy or the package is made
# LIBDIR, INCLUDEDIR, CONFIG  what this build writes for lib, include/qelmodels-VERSION and CONFIG

file(REMOVE_RECURSE ${FOLDER})
if(INSTALLED MATCHES "^(TGZ|DEB)$")
    execute_process(COMMAND ${CMAKE_CPACK_COMMAND} --config ${BUILD}/CPackConfig.cmake -G ${INSTALLED} -B ${FOLDER}
                    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
    file(GLOB package ${FOLDER}/*.tar.gz ${FOLDER}/*.deb)
    set(list ${CMAKE_COMMAND} -E tar tf)
    if(INSTALLED STREQUAL "DEB")
        set(list dpkg-deb --contents)
    endif()
    execute_process(COMMAND ${list} ${package} OUTPUT_VARIABLE files COMMAND_ERROR_IS_FATAL ANY)
    # A line is a path, after whose and how large it is in the one form; folders end with a slash. The path begins
    # with the folder that the package has around all others.
    string(REGEX REPLACE "\n$" "" files "${files}")
    string(REPLACE "\n" ";" files "${files}")
    list(FILTER files EXCLUDE REGEX "/$")
    list(TRANSFORM files REPLACE "^(.* )?(\\./usr|[^/]+)/(.*)$" "\\3")
    set(components core JSON tool)
else()
    foreach(component IN LISTS INSTALLED)
        execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${FOLDER} --component QELModels-${component}
                        OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
    endforeach()
    file(GLOB_RECURSE files RELATIVE ${FOLDER} ${FOLDER}/*)
    set(components ${INSTALLED})
endif()
list(LENGTH files count)

list(JOIN components "|" anyComponent)
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/installed-files.txt expected REGEX "^(${anyComponent}) ")
list(TRANSFORM expected REPLACE "^[^ ]+ +" "")
list(TRANSFORM expected REPLACE "^lib/" "${LIBDIR}/")
list(TRANSFORM expected REPLACE "^include/qelmodels-VERSION/" "${INCLUDEDIR}/")
string(TOLOWER "${CONFIG}" config)
list(TRANSFORM expected REPLACE "-CONFIG" "-${config}")

set(missing ${expected})
list(REMOVE_ITEM missing ${files})
list(REMOVE_ITEM files ${expected})
if(missing OR files OR NOT expected)
    list(JOIN missing "\n  " missing)
    list(JOIN files "\n  " files)
    message(FATAL_ERROR "tests/installed-files.txt lists, for ${components}, what is missing:\n  ${missing}\n"
                        "and does not list:\n  ${files}")
endif()
message(STATUS "${count} files")

# The command needs libraries of other packages: they are looked up.
if(INSTALLED STREQUAL "DEB")
    execute_process(COMMAND dpkg-deb --field ${package} Depends OUTPUT_VARIABLE depends COMMAND_ERROR_IS_FATAL ANY)
    foreach(needed libc6 libstdc++6 libsimdjson)
        string(FIND "${depends}" ${needed} place)
        if(place EQUAL -1)
            message(FATAL_ERROR "the package does not depend on ${needed}, but on: ${depends}")
        endif()
    endforeach()
endif()
