# The target "reference": the HTML reference from the public headers, below reference/html. It fails on any
# warning of Doxygen.
find_package(Doxygen)
if(DOXYGEN_FOUND)
    configure_file("${PROJECT_SOURCE_DIR}/Docs/Doxyfile.in" "${PROJECT_BINARY_DIR}/Doxyfile" @ONLY)
    add_custom_target(reference COMMAND Doxygen::doxygen "${PROJECT_BINARY_DIR}/Doxyfile" VERBATIM)
endif()
