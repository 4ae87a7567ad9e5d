# The public headers, which are the installed ones.
file(GLOB_RECURSE headers CONFIGURE_DEPENDS RELATIVE "${PROJECT_SOURCE_DIR}"
     "${PROJECT_SOURCE_DIR}/Platform/*.h" "${PROJECT_SOURCE_DIR}/VarnholtBaseLib/*.h"
     "${PROJECT_SOURCE_DIR}/VarnholtLib/*.h")
list(FILTER headers EXCLUDE REGEX "Private\\.h$")

# The floors are kept.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
add_test(NAME Structure/Floors
         COMMAND Python3::Interpreter "${CMAKE_CURRENT_SOURCE_DIR}/Structure/floors.py" "${PROJECT_SOURCE_DIR}")

# The umbrella headers and the reference list all public headers.
add_test(NAME Package/HeaderLists
         COMMAND "${CMAKE_COMMAND}" "-DHEADERS=${headers}" -P "${CMAKE_CURRENT_SOURCE_DIR}/Package/HeaderLists.cmake"
         WORKING_DIRECTORY "${PROJECT_SOURCE_DIR}")

# Each public header compiles on its own, and twice.
set(header_sources "")
foreach(header ${headers})
    string(REPLACE "/" "_" name "${header}")
    set(source "${CMAKE_CURRENT_BINARY_DIR}/headers/${name}.cpp")
    file(CONFIGURE OUTPUT "${source}" CONTENT "#include \"@header@\"\n#include \"@header@\"\n" @ONLY)
    list(APPEND header_sources "${source}")
endforeach()
add_library(PublicHeadersAlone OBJECT ${header_sources})
varnholt_private_settings(PublicHeadersAlone)
target_compile_options(PublicHeadersAlone PRIVATE -O0)
