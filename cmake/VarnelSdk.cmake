# What authors of plug-ins get: the interfaces' headers, and a package for find_package(Varnel), found by the prefix.

include(CMakePackageConfigHelpers)
file(GLOB headers CONFIGURE_DEPENDS RELATIVE "${PROJECT_SOURCE_DIR}/source/interfaces" "${PROJECT_SOURCE_DIR}/source/interfaces/*.h")
foreach(header IN LISTS headers)
    varnel_stage_file("${PROJECT_SOURCE_DIR}/source/interfaces/${header}" "include/varnel/${header}")
endforeach()
configure_package_config_file("${CMAKE_CURRENT_LIST_DIR}/VarnelConfig.cmake.in"
    "${VARNEL_STAGE}/lib/cmake/Varnel/VarnelConfig.cmake" INSTALL_DESTINATION lib/cmake/Varnel)
write_basic_package_version_file("${VARNEL_STAGE}/lib/cmake/Varnel/VarnelConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
