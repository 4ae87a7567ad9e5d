# cmake --install: headers, shared libraries, the program, a CMake package and a pkg-config file.
include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/VarnholtLib")
install(TARGETS VarnholtBaseLib VarnholtLib EXPORT VarnholtLibTargets)
if(VARNHOLT_BUILD_TOOLS)
    install(TARGETS varnholt)
endif()
foreach(folder Platform VarnholtBaseLib VarnholtLib)
    install(DIRECTORY "${PROJECT_SOURCE_DIR}/${folder}"
            DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/varnholt"
            FILES_MATCHING PATTERN "*.h" PATTERN "*Private.h" EXCLUDE)
endforeach()

install(EXPORT VarnholtLibTargets NAMESPACE VarnholtLib:: DESTINATION "${package_dir}")
configure_package_config_file("${CMAKE_CURRENT_LIST_DIR}/VarnholtLibConfig.cmake.in"
    "${PROJECT_BINARY_DIR}/VarnholtLibConfig.cmake" INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/VarnholtLibConfigVersion.cmake"
    COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/VarnholtLibConfig.cmake"
              "${PROJECT_BINARY_DIR}/VarnholtLibConfigVersion.cmake"
        DESTINATION "${package_dir}")

# The file finds the rest of the package from where it stands, so an installed tree can be moved.
file(RELATIVE_PATH pc_to_prefix "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
string(REGEX REPLACE "/$" "" pc_to_prefix "${pc_to_prefix}")
configure_file("${CMAKE_CURRENT_LIST_DIR}/varnholtlib.pc.in" "${PROJECT_BINARY_DIR}/varnholtlib.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/varnholtlib.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
