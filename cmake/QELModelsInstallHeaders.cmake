# Runs when the headers are installed: SOURCE's public headers in FOLDER, and of the `detail` headers those that a
# public one includes, directly or not; without those that come with the NEEDED_FOLDERS. It looks at the sources as
# they are then, so nothing is configured anew when an include changes.
cmake_policy(VERSION 3.25)

# Sets what comes with the folders: a header is listed before those that it includes.
function(installed_headers variable)
    set(headers "")
    foreach(folder IN LISTS ARGN)
        file(GLOB public RELATIVE ${SOURCE} ${SOURCE}/${folder}/*.h ${SOURCE}/${folder}/*/*.h)
        list(APPEND headers ${public})
    endforeach()
    list(FILTER headers EXCLUDE REGEX "/detail/")

    set(seen "")
    while(headers)
        list(POP_FRONT headers header)
        if(NOT header IN_LIST seen)
            list(APPEND seen ${header})
            file(STRINGS ${SOURCE}/${header} includes REGEX "^#include [\"<](QELModels|JSON)/")
            list(TRANSFORM includes REPLACE "^#include [\"<]([^\">]+).*" "\\1")
            list(APPEND headers ${includes})
        endif()
    endwhile()
    set(${variable} ${seen} PARENT_SCOPE)
endfunction()

installed_headers(headers ${FOLDER})
installed_headers(others ${NEEDED_FOLDERS})
list(REMOVE_ITEM headers ${others})
foreach(header IN LISTS headers)
    cmake_path(GET header PARENT_PATH folder)
    file(INSTALL ${SOURCE}/${header} DESTINATION ${DESTINATION}/${folder})
endforeach()
