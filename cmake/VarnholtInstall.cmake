# cmake --install: headers, the two libraries, the program, a CMake package and a pkg-config file.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/VarnholtLib")
install(TARGETS VarnholtBaseLib VarnholtLib EXPORT VarnholtLibTargets
        INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/varnholt")
if(VARNHOLT_BUILD_TOOLS)
    install(TARGETS varnholt)
endif()
foreach(folder Platform VarnholtBaseLib VarnholtLib)
    install(DIRECTORY "${PROJECT_SOURCE_DIR}/${folder}"
            DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/varnholt"
            FILES_MATCHING PATTERN "*.h" PATTERN "*Private.h" EXCLUDE)
endforeach()

if(VARNHOLT_BUILD_DESKTOP)
    install(TARGETS VarnholtDesktop EXPORT VarnholtLibDesktopTargets
            INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/varnholt")
    install(EXPORT VarnholtLibDesktopTargets NAMESPACE VarnholtLib:: DESTINATION "${package_dir}")
    install(FILES "${PROJECT_SOURCE_DIR}/Desktop/Qt/Desktop.h"
            DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/varnholt/Desktop/Qt")
    install(TARGETS varnholt-station)
    set(station_share "${PROJECT_SOURCE_DIR}/Desktop/Station/share")
    install(FILES "${station_share}/varnholt-station.desktop" DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
    install(FILES "${station_share}/varnholt-station.svg"
            DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps")
endif()

install(EXPORT VarnholtLibTargets NAMESPACE VarnholtLib:: DESTINATION "${package_dir}")
configure_package_config_file("${CMAKE_CURRENT_LIST_DIR}/VarnholtLibConfig.cmake.in"
    "${PROJECT_BINARY_DIR}/VarnholtLibConfig.cmake" INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/VarnholtLibConfigVersion.cmake"
    COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/VarnholtLibConfig.cmake"
              "${PROJECT_BINARY_DIR}/VarnholtLibConfigVersion.cmake"
              "${CMAKE_CURRENT_LIST_DIR}/VarnholtEmbedVersion.cmake"
              "${CMAKE_CURRENT_LIST_DIR}/FindLibZip.cmake"
              "${CMAKE_CURRENT_LIST_DIR}/FindPangoCairo.cmake"
        DESTINATION "${package_dir}")

# The pkg-config file finds the package from its own place, so an installed tree can be moved.
file(RELATIVE_PATH pc_to_prefix "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
string(REGEX REPLACE "/$" "" pc_to_prefix "${pc_to_prefix}")
set(pc_requires "")
set(pc_link_options "")
if(NOT BUILD_SHARED_LIBS)
    set(pc_requires "icu-uc >= 67, libxml-2.0 >= 2.9.10, zlib >= 1.2.11, libcurl >= 7.85, libzip >= 1.5, sqlite3 >= 3.34, pangocairo >= 1.46, cairo-png >= 1.16, cairo-svg >= 1.16, cairo-pdf >= 1.16")
    get_target_property(pc_link_options VarnholtLib INTERFACE_LINK_OPTIONS)
    string(REPLACE "LINKER:" "-Wl," pc_link_options "${pc_link_options} ")
endif()
configure_file("${CMAKE_CURRENT_LIST_DIR}/varnholtlib.pc.in" "${PROJECT_BINARY_DIR}/varnholtlib.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/varnholtlib.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

# So can the program and the shared libraries, which find one another by a RUNPATH relative to themselves.
# It is removed where the loader searches the directory of the libraries anyway.
if(BUILD_SHARED_LIBS)
    file(RELATIVE_PATH bin_to_lib "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}")
    set_target_properties(VarnholtLib PROPERTIES INSTALL_RPATH "$ORIGIN")
    set(files_with_runpath "${CMAKE_INSTALL_LIBDIR}/$<TARGET_FILE_NAME:VarnholtLib>")
    if(VARNHOLT_BUILD_TOOLS)
        set_target_properties(varnholt PROPERTIES INSTALL_RPATH "$ORIGIN/${bin_to_lib}")
        list(APPEND files_with_runpath "${CMAKE_INSTALL_BINDIR}/$<TARGET_FILE_NAME:varnholt>")
    endif()
    if(VARNHOLT_BUILD_DESKTOP)
        set_target_properties(VarnholtDesktop PROPERTIES INSTALL_RPATH "$ORIGIN")
        set_target_properties(varnholt-station PROPERTIES INSTALL_RPATH "$ORIGIN/${bin_to_lib}")
        list(APPEND files_with_runpath "${CMAKE_INSTALL_LIBDIR}/$<TARGET_FILE_NAME:VarnholtDesktop>"
             "${CMAKE_INSTALL_BINDIR}/$<TARGET_FILE_NAME:varnholt-station>")
    endif()
    install(CODE "set(VARNHOLT_LIBRARY_DIR \"${CMAKE_INSTALL_LIBDIR}\")
                  set(VARNHOLT_FILES_WITH_RUNPATH \"${files_with_runpath}\")
                  include(\"${CMAKE_CURRENT_LIST_DIR}/RemoveRunpath.cmake\")")
endif()
