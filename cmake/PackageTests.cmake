# The one list of what the ZIP of the test programs contains; scripts/package.sh packs it beside the program's own. All
# programs of velbooter_test are in it, except those that tests/package/left-out.txt names, with the files that they expect
# beside them.
set(here "${PROJECT_SOURCE_DIR}/tests/package")
set(leftOut "${here}/left-out.txt")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${leftOut}")

# An indented line of the list is a test program and a pattern of the names of its tests.
file(STRINGS "${leftOut}" lines REGEX "^    ")
set(filters "")
foreach(line IN LISTS lines)
    if(NOT line MATCHES "^    ([a-z0-9_]+) ([A-Za-z0-9_.*/?]+)$")
        message(FATAL_ERROR "${leftOut}: not a test program and a pattern: ${line}")
    endif()
    if(DEFINED "filter_${CMAKE_MATCH_1}")
        string(APPEND "filter_${CMAKE_MATCH_1}" ":${CMAKE_MATCH_2}")
    else()
        set("filter_${CMAKE_MATCH_1}" "-${CMAKE_MATCH_2}")
    endif()
endforeach()

get_property(programs GLOBAL PROPERTY VELBOOTER_TEST_PROGRAMS)
set(packed "")
set(calls "")
foreach(program IN LISTS programs)
    if(DEFINED "filter_${program}")
        set(filter "${filter_${program}}")
    else()
        set(filter "*")
    endif()
    if(NOT filter STREQUAL "-*")
        list(APPEND packed ${program})
        string(APPEND calls "set \"GTEST_FILTER=${filter}\"\ncall :run ${program}\n")
    endif()
endforeach()
configure_file("${here}/run-tests.bat.in" "${PROJECT_BINARY_DIR}/run-tests.bat" @ONLY NEWLINE_STYLE DOS)
configure_file("${leftOut}" "${PROJECT_BINARY_DIR}/left-out.txt" @ONLY NEWLINE_STYLE DOS)

install(FILES "${PROJECT_BINARY_DIR}/run-tests.bat" "${PROJECT_BINARY_DIR}/left-out.txt" DESTINATION .
        COMPONENT tests EXCLUDE_FROM_ALL)
install(TARGETS ${packed} recorder e2e_held e2e_note e2e_plugin e2e_spy RUNTIME DESTINATION tests
        COMPONENT tests EXCLUDE_FROM_ALL)
get_target_property(foreignCabinet cabarc_extract_tests FOREIGN_CABINET)
install(FILES "${foreignCabinet}" "${PROJECT_SOURCE_DIR}/tests/tools/cabarc/ParsedCabinet.cpp"
        "${PROJECT_SOURCE_DIR}/tests/tools/cabarc/ParsedCabinet.h" DESTINATION tests/foreign
        COMPONENT tests EXCLUDE_FROM_ALL)
install(DIRECTORY "${VELBOOTER_DEMO_FOLDER}/" DESTINATION tests/demo COMPONENT tests EXCLUDE_FROM_ALL)
add_custom_target(packed_tests DEPENDS ${packed} recorder e2e_held e2e_note e2e_plugin e2e_spy)

# CPack reads this file for the tests, and its own CPackConfig.cmake for the program.
file(WRITE "${PROJECT_BINARY_DIR}/CPackTests.cmake" "include([==[${PROJECT_BINARY_DIR}/CPackConfig.cmake]==])
string(APPEND CPACK_PACKAGE_FILE_NAME -tests)
set(CPACK_INSTALL_CMAKE_PROJECTS [==[${PROJECT_BINARY_DIR};${PROJECT_NAME};tests;/]==])
")
