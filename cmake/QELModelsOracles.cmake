# The literal twins of the fast algorithms, tests/*Oracle.cpp: the tests and the fuzz targets compare with them.
file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/*Oracle.cpp)
if(NOT QELMODELS_JSON)
    list(FILTER sources EXCLUDE REGEX "JSONOracle")
endif()
add_library(QELModelsOracles STATIC ${sources})
qelmodels_warnings(QELModelsOracles)
# They are slow by design, and asked many thousand times.
target_compile_options(QELModelsOracles PRIVATE ${QELMODELS_LIBRARY_OPTIONS})
target_include_directories(QELModelsOracles PUBLIC ${PROJECT_SOURCE_DIR})
target_link_libraries(QELModelsOracles PUBLIC QELModels $<TARGET_NAME_IF_EXISTS:QELModelsJSON>)
