# Runs when the headers are installed: SOURCE's public headers in FOLDERS, and of the `detail` headers those that a
# public one includes, directly or not. It looks at the sources as they are then, so nothing is configured anew
# when an include changes.
cmake_policy(VERSION 3.25)

set(headers "")
foreach(folder IN LISTS FOLDERS)
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

foreach(header IN LISTS seen)
    cmake_path(GET header PARENT_PATH folder)
    file(INSTALL ${SOURCE}/${header} DESTINATION ${DESTINATION}/${folder})
endforeach()
