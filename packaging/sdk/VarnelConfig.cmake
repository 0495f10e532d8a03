# Varnel lies in a directory of its own, where CMake does not look for packages.
include("${CMAKE_CURRENT_LIST_DIR}/../../varnel/lib/cmake/Varnel/VarnelConfig.cmake")
