# Promise: an installed component has the files that installed-files.txt lists for it, and no others.
#
# BUILD      the build folder of a static library
# INSTALLED  the components to install
# FOLDER     where the copy is made
# LIBDIR, INCLUDEDIR, CONFIG  what this build writes for lib, include/qelmodels-VERSION and CONFIG

file(REMOVE_RECURSE ${FOLDER})
foreach(component IN LISTS INSTALLED)
    execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${FOLDER} --component QELModels-${component}
                    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endforeach()
file(GLOB_RECURSE files RELATIVE ${FOLDER} ${FOLDER}/*)
set(components ${INSTALLED})
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
