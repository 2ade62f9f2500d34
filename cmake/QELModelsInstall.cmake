# What `cmake --install` installs, as components that can be had one by one:
#   QELModels-core  the library, its headers, the CMake package and its pkg-config file
#   QELModels-JSON  the same of the JSON reader and writer; it needs the core
#   QELModels-tool  the command with its manual and completions; it needs both where they are shared libraries
include(CMakePackageConfigHelpers)

set(packageDir ${CMAKE_INSTALL_LIBDIR}/cmake/QELModels)
get_target_property(libraryType QELModels TYPE)

# install_library(target component): the library, and how CMake finds it.
function(install_library target component)
    install(TARGETS ${target} EXPORT ${target}Targets
            RUNTIME COMPONENT ${component} LIBRARY COMPONENT ${component} ARCHIVE COMPONENT ${component})
    install(EXPORT ${target}Targets NAMESPACE QELModels:: DESTINATION ${packageDir} COMPONENT ${component})
endfunction()

set(headerDestination ${QELMODELS_INCLUDEDIR})
if(NOT IS_ABSOLUTE ${headerDestination})
    # The prefix is the one of the moment: `cmake --install --prefix` may choose another.
    set(headerDestination "\${CMAKE_INSTALL_PREFIX}/${headerDestination}")
endif()

# install_headers(folder component [folders that the component needs]): the public headers of a folder.
function(install_headers folder component)
    install(CODE "set(SOURCE \"${PROJECT_SOURCE_DIR}\")
set(FOLDER \"${folder}\")
set(NEEDED_FOLDERS \"${ARGN}\")
set(DESTINATION \"${headerDestination}\")"
            SCRIPT ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/QELModelsInstallHeaders.cmake COMPONENT ${component})
endfunction()

# A shared library is found from the place of the file that needs it, so that an installed tree can be moved. Where
# one of the two folders is an absolute path, they do not move together.
function(find_libraries_from folder target)
    if(NOT libraryType STREQUAL "SHARED_LIBRARY" OR DEFINED CMAKE_INSTALL_RPATH)
        return()
    endif()
    set(path ${CMAKE_INSTALL_FULL_LIBDIR})
    if(NOT IS_ABSOLUTE ${folder} AND NOT IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR})
        set(origin $ORIGIN)
        if(APPLE)
            set(origin @loader_path)
        endif()
        cmake_path(RELATIVE_PATH CMAKE_INSTALL_LIBDIR BASE_DIRECTORY ${folder} OUTPUT_VARIABLE path)
        string(REGEX REPLACE "/\\.$" "" path ${origin}/${path})
    endif()
    set_property(TARGET ${target} PROPERTY INSTALL_RPATH ${path})
endfunction()

install_library(QELModels QELModels-core)
install_headers(QELModels QELModels-core)
if(TARGET QELModelsJSON)
    install_library(QELModelsJSON QELModels-JSON)
    install_headers(JSON QELModels-JSON QELModels)
    find_libraries_from(${CMAKE_INSTALL_LIBDIR} QELModelsJSON)
endif()

if(TARGET qelmodels)
    install(TARGETS qelmodels COMPONENT QELModels-tool)
    find_libraries_from(${CMAKE_INSTALL_BINDIR} qelmodels)
    # The command writes its own page of the manual and its completions, where it can be run.
    if(NOT CMAKE_CROSSCOMPILING)
        set(generated ${PROJECT_BINARY_DIR}/generated)
        file(MAKE_DIRECTORY ${generated})
        foreach(form man bash zsh fish)
            add_custom_command(OUTPUT ${generated}/qelmodels.${form}
                               COMMAND qelmodels generate ${form} > ${generated}/qelmodels.${form}
                               DEPENDS qelmodels VERBATIM)
            list(APPEND generatedFiles ${generated}/qelmodels.${form})
        endforeach()
        add_custom_target(qelmodels-generated ALL DEPENDS ${generatedFiles})
        # install_generated(form folder name): where the programs that read this form look for it.
        function(install_generated form folder name)
            install(FILES ${generated}/qelmodels.${form} DESTINATION ${folder} RENAME ${name} COMPONENT QELModels-tool)
        endfunction()
        install_generated(man  ${CMAKE_INSTALL_MANDIR}/man1                          qelmodels.1)
        install_generated(bash ${CMAKE_INSTALL_DATADIR}/bash-completion/completions  qelmodels)
        install_generated(zsh  ${CMAKE_INSTALL_DATADIR}/zsh/site-functions           _qelmodels)
        install_generated(fish ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d    qelmodels.fish)
    endif()
endif()

configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/QELModelsConfig.cmake.in QELModelsConfig.cmake
                              INSTALL_DESTINATION ${packageDir})
write_basic_package_version_file(QELModelsConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/QELModelsConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/QELModelsConfigVersion.cmake
        DESTINATION ${packageDir} COMPONENT QELModels-core)

# pkg-config: a static library passes on what it needs itself, a shared one does not.
set(pcCflags "")
set(pcRequiresKeyword "Requires.private")
if(libraryType STREQUAL "STATIC_LIBRARY")
    set(pcCflags " -DQELMODELS_STATIC")
    set(pcRequiresKeyword "Requires")
endif()
# Paths relative to the .pc file keep an installed tree movable.
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig
           OUTPUT_VARIABLE pcPrefix)
function(install_pkg_config name component)
    configure_file(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/${name}.pc.in ${name}.pc @ONLY)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${name}.pc
            DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT ${component})
endfunction()
install_pkg_config(QELModels QELModels-core)
if(TARGET QELModelsJSON)
    install_pkg_config(QELModelsJSON QELModels-JSON)
endif()
