# GoogleTest is built from Debian's source package, so that the cross builds have it too.
set(VELBOOTER_GOOGLETEST_SOURCE "/usr/src/googletest" CACHE PATH "Sources of GoogleTest")
set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
add_subdirectory("${VELBOOTER_GOOGLETEST_SOURCE}" "${PROJECT_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL SYSTEM)
foreach(target gtest gmock gtest_main gmock_main)
    set_target_properties(${target} PROPERTIES COMPILE_WARNING_AS_ERROR OFF)
endforeach()

# velbooter_test(NAME SOURCE... [LIBRARIES LIB...] [PROPERTIES NAME VALUE...]): a GoogleTest program whose
# cases become tests of ctest, prefixed with the program's name. PROPERTIES are those of each ctest test.
function(velbooter_test name)
    cmake_parse_arguments(test "" "" "LIBRARIES;PROPERTIES" ${ARGN})
    add_executable(${name} ${test_UNPARSED_ARGUMENTS})
    target_link_libraries(${name} PRIVATE velbooter_options ${test_LIBRARIES} GTest::gmock GTest::gtest_main)
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/tests")
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 120
                         TEST_PREFIX "${name}." PROPERTIES TIMEOUT 300 ${test_PROPERTIES})
endfunction()
