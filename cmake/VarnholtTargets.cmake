# The kinds of targets of this tree. Each folder of the library is one object library; the object libraries
# are collected into VarnholtBaseLib and VarnholtLib, which are shared or static as BUILD_SHARED_LIBS says.

# Settings of all our own code. None of them reaches the users of the libraries.
function(varnholt_private_settings target)
    set_target_properties(${target} PROPERTIES
        CXX_STANDARD 20 CXX_STANDARD_REQUIRED ON CXX_EXTENSIONS OFF
        CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON
        POSITION_INDEPENDENT_CODE ON)
    target_include_directories(${target} PRIVATE "${PROJECT_SOURCE_DIR}")
    # Results are fixed to the bit: no contraction of multiply and add, no fast-math.
    # Calls inside a shared library bind to its own functions.
    target_compile_options(${target} PRIVATE
        -ffp-contract=off -fno-semantic-interposition -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wold-style-cast
        -Wnon-virtual-dtor -Woverloaded-virtual -Wimplicit-fallthrough
        # g++ 12 warns of overlaps in string concatenation that cannot happen. It makes inline variables and
        # statics of templates unique in the process, and never unloads a shared library that holds one.
        $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict> $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
    if(VARNHOLT_WARNINGS_AS_ERRORS)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    if(VARNHOLT_SANITIZE)
        target_compile_options(${target} PRIVATE
            -fsanitize=${VARNHOLT_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer
            # g++ gives false warnings about instrumented code, mostly in the standard library.
            $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
        target_link_options(${target} PRIVATE -fsanitize=${VARNHOLT_SANITIZE})
    endif()
endfunction()

# varnholt_folder(<target> [<third-party target>...]): the sources of the current folder as an object library.
# The folder is listed again at each build, so a new module is only a new pair of files.
function(varnholt_folder target)
    file(GLOB sources CONFIGURE_DEPENDS *.cpp)
    add_library(${target} OBJECT ${sources})
    varnholt_private_settings(${target})
    target_link_libraries(${target} PRIVATE ${ARGN})
endfunction()

# varnholt_library(<target> [FOLDERS <object library>...] [PUBLIC <library>...] [PRIVATE <library>...]):
# one of the two libraries, from the sources of the current folder and of the object libraries.
function(varnholt_library target)
    cmake_parse_arguments(arg "" "" "FOLDERS;PUBLIC;PRIVATE" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS *.cpp)
    if(BUILD_SHARED_LIBS)
        add_library(${target} SHARED ${sources})
        target_link_options(${target} PRIVATE -Wl,-Bsymbolic-functions)
    else()
        add_library(${target} STATIC ${sources})
    endif()
    add_library(VarnholtLib::${target} ALIAS ${target})
    varnholt_private_settings(${target})
    foreach(folder ${arg_FOLDERS})
        # The objects only: a static library that linked the folder's target would have to export it.
        target_sources(${target} PRIVATE $<TARGET_OBJECTS:${folder}>)
    endforeach()
    # Before 1.0 a minor version may change the binary interface.
    if(PROJECT_VERSION_MAJOR EQUAL 0)
        set(soversion "0.${PROJECT_VERSION_MINOR}")
    else()
        set(soversion "${PROJECT_VERSION_MAJOR}")
    endif()
    set_target_properties(${target} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${soversion})
    target_compile_features(${target} PUBLIC cxx_std_20)
    target_include_directories(${target} INTERFACE "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>")
    target_link_libraries(${target} PUBLIC ${arg_PUBLIC} PRIVATE ${arg_PRIVATE})
endfunction()

# What the leak sanitizer is told in the environment of a test.
set(VARNHOLT_KNOWN_LEAKS
    "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/Tests/Support/leaks.txt:print_suppressions=0")

# varnholt_test(<name> <folder>): one test program from all sources of that folder below Tests.
function(varnholt_test name folder)
    file(GLOB sources CONFIGURE_DEPENDS "${folder}/*.cpp")
    add_executable(${name} ${sources})
    varnholt_private_settings(${name})
    target_link_libraries(${name} PRIVATE VarnholtLib GTest::gmock GTest::gtest_main)
    gtest_discover_tests(${name} TEST_PREFIX "${folder}/" DISCOVERY_TIMEOUT 60
        PROPERTIES TIMEOUT 300 ENVIRONMENT "${VARNHOLT_KNOWN_LEAKS}")
endfunction()
