include("${CMAKE_CURRENT_LIST_DIR}/../../varnel/lib/cmake/Varnel/VarnelConfigVersion.cmake")
