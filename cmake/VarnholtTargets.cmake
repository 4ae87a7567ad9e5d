# The kinds of target that the tree is made of. Every folder of the library is one object library;
# the object libraries are gathered into the two shared libraries.

# Settings of all our own code. Nothing of this reaches the users of the installed package.
function(varnholt_private_settings target)
    set_target_properties(${target} PROPERTIES
        CXX_STANDARD 20 CXX_STANDARD_REQUIRED ON CXX_EXTENSIONS OFF
        CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON
        POSITION_INDEPENDENT_CODE ON)
    target_include_directories(${target} PRIVATE "${PROJECT_SOURCE_DIR}")
    # Results are fixed to the bit: no fused multiply-add behind our back, no fast-math.
    # Calls inside a shared library go straight to its own functions.
    target_compile_options(${target} PRIVATE
        -ffp-contract=off -fno-semantic-interposition -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wold-style-cast
        -Wnon-virtual-dtor -Woverloaded-virtual -Wimplicit-fallthrough
        -Wno-restrict)  # g++ 12 sees overlaps in the concatenation of strings that can not be
    if(VARNHOLT_WARNINGS_AS_ERRORS)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    if(VARNHOLT_SANITIZE)
        target_compile_options(${target} PRIVATE
            -fsanitize=${VARNHOLT_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer
            -Wno-maybe-uninitialized)  # g++ warns falsely about instrumented code, in the standard library above all
        target_link_options(${target} PRIVATE -fsanitize=${VARNHOLT_SANITIZE})
    endif()
endfunction()

# With g++, inline variables and statics of templates are otherwise unique in the process, and a shared library
# that holds one is never unloaded.
set(varnholt_unloadable "$<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>")

# varnholt_folder(<target> [<third-party target>...]): the sources of the current folder as an object library.
# A new module is a new pair of files: the folder is read again at the next build.
function(varnholt_folder target)
    file(GLOB sources CONFIGURE_DEPENDS *.cpp)
    add_library(${target} OBJECT ${sources})
    varnholt_private_settings(${target})
    target_compile_options(${target} PRIVATE ${varnholt_unloadable})
    target_link_libraries(${target} PRIVATE ${ARGN})
endfunction()

# varnholt_shared_library(<target> FOLDERS <object library>... LIBRARIES <library>...)
function(varnholt_shared_library target)
    cmake_parse_arguments(arg "" "" "FOLDERS;LIBRARIES" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS *.cpp)
    add_library(${target} SHARED ${sources})
    add_library(VarnholtLib::${target} ALIAS ${target})
    varnholt_private_settings(${target})
    target_compile_options(${target} PRIVATE ${varnholt_unloadable})
    set_target_properties(${target} PROPERTIES
        VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
    target_compile_features(${target} PUBLIC cxx_std_20)
    target_link_options(${target} PRIVATE -Wl,-Bsymbolic-functions)
    target_include_directories(${target} INTERFACE
        "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>"
        "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/varnholt>")
    target_link_libraries(${target} PRIVATE ${arg_FOLDERS} PUBLIC ${arg_LIBRARIES})
endfunction()

# varnholt_test(<name> <folder>): one test program of all sources of that folder below Tests.
function(varnholt_test name folder)
    file(GLOB sources CONFIGURE_DEPENDS "${folder}/*.cpp")
    add_executable(${name} ${sources})
    varnholt_private_settings(${name})
    target_link_libraries(${name} PRIVATE VarnholtLib GTest::gmock GTest::gtest_main)
    gtest_discover_tests(${name} TEST_PREFIX "${folder}/" DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300)
endfunction()
