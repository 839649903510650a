# GoogleTest is built from Debian's source package, so that it is available to the cross builds too.
set(VELBOOTER_GOOGLETEST_SOURCE "/usr/src/googletest" CACHE PATH "Sources of GoogleTest")
set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
add_subdirectory("${VELBOOTER_GOOGLETEST_SOURCE}" "${PROJECT_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL SYSTEM)
# These are Debian's sources: compiler warnings in them cannot be fixed here.
foreach(target gtest gmock gtest_main gmock_main)
    set_target_properties(${target} PROPERTIES COMPILE_WARNING_AS_ERROR OFF)
    target_compile_options(${target} PRIVATE -O1)
endforeach()

# velbooter_packed_test_file(TARGET): links a program or library of the tests for packing: small, and the same bytes from the
# same sources.
function(velbooter_packed_test_file name)
    target_link_options(${name} PRIVATE -s -Wl,--no-insert-timestamp)
endfunction()

# velbooter_test(NAME [EACH_CASE] SOURCE... [LIBRARIES LIB...] [PROPERTIES NAME VALUE...]): a GoogleTest program. Each of its
# suites becomes a test of ctest, NAME.SUITE, and runs in a process of its own; with EACH_CASE each case does, NAME.SUITE.CASE.
# PROPERTIES are those of each ctest test. The global property VELBOOTER_TEST_PROGRAMS lists all such programs.
function(velbooter_test name)
    cmake_parse_arguments(test "EACH_CASE" "" "LIBRARIES;PROPERTIES" ${ARGN})
    add_executable(${name} ${test_UNPARSED_ARGUMENTS})
    target_link_libraries(${name} PRIVATE velbooter_options ${test_LIBRARIES} GTest::gmock GTest::gtest_main)
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/tests")
    set_property(GLOBAL APPEND PROPERTY VELBOOTER_TEST_PROGRAMS ${name})
    if(WIN32)
        target_sources(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests/support/test.rc")
        set_source_files_properties("${PROJECT_SOURCE_DIR}/tests/support/test.rc" PROPERTIES
            OBJECT_DEPENDS "${PROJECT_SOURCE_DIR}/tests/support/test.manifest")
        velbooter_packed_test_file(${name})
    endif()
    # ctest asks the program for its tests when it starts, because a cross build may not be able to run it.
    set(list "${CMAKE_CURRENT_BINARY_DIR}/${name}.cmake")
    file(GENERATE OUTPUT "${list}" CONTENT "
set(program [==[$<TARGET_FILE:${name}>]==])
set(name [==[${name}]==])
set(eachCase [==[${test_EACH_CASE}]==])
set(emulator [==[${CMAKE_CROSSCOMPILING_EMULATOR}]==])
set(properties [==[TIMEOUT;1200;${test_PROPERTIES}]==])
include([==[${PROJECT_SOURCE_DIR}/cmake/AddTests.cmake]==])
")
    set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES "${list}")
endfunction()

# velbooter_test_uses(NAME TARGET MACRO): builds TARGET, a program in realmode/, before the tests of NAME, which find it at the path
# MACRO.
function(velbooter_test_uses name target macro)
    get_target_property(program ${target} PROGRAM)
    target_compile_definitions(${name} PRIVATE "${macro}=\"${program}\"")
    add_dependencies(${name} ${target})
endfunction()
