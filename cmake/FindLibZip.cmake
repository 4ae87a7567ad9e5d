# FindLibZip: libzip, as LibZip::LibZip.
include(FindPackageHandleStandardArgs)
find_path(LibZip_INCLUDE_DIR zip.h)
find_library(LibZip_LIBRARY zip)
find_package_handle_standard_args(LibZip REQUIRED_VARS LibZip_LIBRARY LibZip_INCLUDE_DIR)
if(LibZip_FOUND AND NOT TARGET LibZip::LibZip)
    add_library(LibZip::LibZip UNKNOWN IMPORTED GLOBAL)
    set_target_properties(LibZip::LibZip PROPERTIES
        IMPORTED_LOCATION "${LibZip_LIBRARY}" INTERFACE_INCLUDE_DIRECTORIES "${LibZip_INCLUDE_DIR}")
endif()
