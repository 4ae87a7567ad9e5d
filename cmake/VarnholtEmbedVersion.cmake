# varnholt_embed_version(<target> [<version>])
#
# Puts a version into a program or shared library, where GetVersion() and `varnholt version` find it: one to four numbers
# from 0 to 65535 with full stops between them, by default that of the project. The note stays when the file is
# stripped.
function(varnholt_embed_version target)
    set(version "${PROJECT_VERSION}")
    if(ARGC GREATER 1)
        set(version "${ARGV1}")
    endif()
    if(NOT version MATCHES "^[0-9]+([.][0-9]+)?([.][0-9]+)?([.][0-9]+)?$")
        message(FATAL_ERROR "varnholt_embed_version: \"${version}\" is not a version of one to four numbers")
    endif()
    string(REPLACE "." ";" parts "${version}")
    set(numbers "")
    foreach(part IN LISTS parts)
        string(REGEX REPLACE "^0+(.)" "\\1" number "${part}")
        if(number GREATER 65535)
            message(FATAL_ERROR "varnholt_embed_version: ${number} in \"${version}\" is above 65535")
        endif()
        list(APPEND numbers "${number}")
    endforeach()
    list(APPEND numbers 0 0 0)
    list(SUBLIST numbers 0 4 numbers)
    string(REPLACE ";" ", " numbers "${numbers}")

    get_property(languages GLOBAL PROPERTY ENABLED_LANGUAGES)
    set(extension cpp)
    if(C IN_LIST languages)
        set(extension c)
    endif()
    set(source "${CMAKE_CURRENT_BINARY_DIR}/${target}-version.${extension}")
    file(CONFIGURE OUTPUT "${source}" @ONLY CONTENT [[
/* The version of @target@ as a note; the numbers are in the byte order of the machine. */
__attribute__((used, aligned(4), section(".note.varnholt.version"))) static const struct {
    unsigned int OwnerSize, VersionSize, Type;
    char Owner[12];
    unsigned short Version[4];
} varnholt_version_note = {9, 8, 1, "Varnholt", {@numbers@}};
]])
    set_source_files_properties("${source}" PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
    target_sources(${target} PRIVATE "${source}")
endfunction()
