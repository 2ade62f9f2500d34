# Another release's simdjson, below QELMODELS_SIMDJSON_ROOT, in programs of this release: see
# scripts/platform_packages.sh. It is linked statically, since the shared library asks for its own release's libstdc++.
find_package(Threads REQUIRED)
include(${QELMODELS_SIMDJSON_ROOT}/usr/lib/${CMAKE_LIBRARY_ARCHITECTURE}/cmake/simdjson/simdjson_staticTargets.cmake)
add_library(simdjson::simdjson INTERFACE IMPORTED)
target_link_libraries(simdjson::simdjson INTERFACE simdjson::simdjson_static)
# All that it asks for: objects of g++ 13 and later that include <iostream> name this function, so that they are not
# linked with a libstdc++ that leaves the initialisation of the streams to them. simdjson uses no stream by itself.
target_link_options(simdjson::simdjson INTERFACE LINKER:--defsym=_ZSt21ios_base_library_initv=0)
