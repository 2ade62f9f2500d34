# What `cpack` makes of an installed tree: a .tar.gz, and a .deb where the distribution's tools for these are found.
find_program(QELMODELS_DPKG_DEB dpkg-deb)
find_program(QELMODELS_DPKG_SHLIBDEPS dpkg-shlibdeps)
find_program(QELMODELS_FILE file)
mark_as_advanced(QELMODELS_DPKG_DEB QELMODELS_DPKG_SHLIBDEPS QELMODELS_FILE)

set(QELMODELS_PACKAGES TGZ)
# The tools know the packages of the machine that they run on.
if(QELMODELS_DPKG_DEB AND NOT CMAKE_CROSSCOMPILING)
    list(APPEND QELMODELS_PACKAGES DEB)
endif()

set(CPACK_GENERATOR ${QELMODELS_PACKAGES})
set(CPACK_PACKAGE_NAME qelmodels)
set(CPACK_PACKAGE_FILE_NAME qelmodels-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_PACKAGE_VENDOR "The QELModels developers")
set(CPACK_PACKAGE_CONTACT "The QELModels developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY ${PROJECT_DESCRIPTION})
# Folders are as the distribution wants them, whatever the umask of who makes the package.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_VERBATIM_VARIABLES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libdevel)
# The command and the shared libraries name what they need, where the tool that looks it up is found.
if(QELMODELS_DPKG_SHLIBDEPS AND QELMODELS_FILE)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
endif()
get_target_property(libraryType QELModels TYPE)
if(libraryType STREQUAL "SHARED_LIBRARY")
    set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
elseif(TARGET QELModelsJSON)
    # An application that links the static JSON reader links simdjson itself.
    set(CPACK_DEBIAN_PACKAGE_RECOMMENDS libsimdjson-dev)
endif()

include(CPack)
