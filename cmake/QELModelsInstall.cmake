# What `cmake --install` installs: libraries, headers, a CMake package with components, pkg-config files, and
# the command with its manual and completions.
include(CMakePackageConfigHelpers)

set(packageDir ${CMAKE_INSTALL_LIBDIR}/cmake/QELModels)
get_target_property(libraryType QELModels TYPE)

install(TARGETS QELModels EXPORT QELModelsTargets)
install(EXPORT QELModelsTargets NAMESPACE QELModels:: DESTINATION ${packageDir})
if(TARGET QELModelsJSON)
    install(TARGETS QELModelsJSON EXPORT QELModelsJSONTargets)
    install(EXPORT QELModelsJSONTargets NAMESPACE QELModels:: DESTINATION ${packageDir})
endif()

set(headerFolders QELModels)
if(TARGET QELModelsJSON)
    list(APPEND headerFolders JSON)
endif()
set(headerDestination ${QELMODELS_INCLUDEDIR})
if(NOT IS_ABSOLUTE ${headerDestination})
    # The prefix is the one of the moment: `cmake --install --prefix` may choose another.
    set(headerDestination "\${CMAKE_INSTALL_PREFIX}/${headerDestination}")
endif()
install(CODE "set(SOURCE \"${PROJECT_SOURCE_DIR}\")
set(FOLDERS \"${headerFolders}\")
set(DESTINATION \"${headerDestination}\")"
        SCRIPT ${CMAKE_CURRENT_LIST_DIR}/QELModelsInstallHeaders.cmake)

if(TARGET qelmodels)
    install(TARGETS qelmodels)
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
        install(FILES ${generated}/qelmodels.man DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 RENAME qelmodels.1)
        install(FILES ${generated}/qelmodels.bash
                DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME qelmodels)
        install(FILES ${generated}/qelmodels.zsh
                DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions RENAME _qelmodels)
        install(FILES ${generated}/qelmodels.fish
                DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
    endif()
endif()

configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/QELModelsConfig.cmake.in QELModelsConfig.cmake
                              INSTALL_DESTINATION ${packageDir})
write_basic_package_version_file(QELModelsConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/QELModelsConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/QELModelsConfigVersion.cmake
        DESTINATION ${packageDir})

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
set(pcFiles QELModels)
if(TARGET QELModelsJSON)
    list(APPEND pcFiles QELModelsJSON)
endif()
foreach(name IN LISTS pcFiles)
    configure_file(${CMAKE_CURRENT_LIST_DIR}/${name}.pc.in ${name}.pc @ONLY)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
