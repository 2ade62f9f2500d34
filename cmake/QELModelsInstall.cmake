# What `cmake --install` lays down: libraries, headers, a CMake package with components, pkg-config files
# and the command.
include(CMakePackageConfigHelpers)

set(packageDir ${CMAKE_INSTALL_LIBDIR}/cmake/QELModels)
get_target_property(libraryType QELModels TYPE)

install(TARGETS QELModels EXPORT QELModelsTargets)
install(EXPORT QELModelsTargets NAMESPACE QELModels:: DESTINATION ${packageDir})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/QELModels DESTINATION ${QELMODELS_INCLUDEDIR}
        FILES_MATCHING PATTERN "*.h")
if(TARGET QELModelsJSON)
    install(TARGETS QELModelsJSON EXPORT QELModelsJSONTargets)
    install(EXPORT QELModelsJSONTargets NAMESPACE QELModels:: DESTINATION ${packageDir})
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/JSON DESTINATION ${QELMODELS_INCLUDEDIR}
            FILES_MATCHING PATTERN "*.h")
endif()
if(TARGET qelmodels)
    install(TARGETS qelmodels)
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
