# The one list of what ships: scripts/build.sh installs it as build/app, scripts/package.sh packs it.
set(helpFile "${PROJECT_BINARY_DIR}/corvane_help.chm")
set(guide "${PROJECT_BINARY_DIR}/user-guide.html")
file(GLOB helpSources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/help/*" "${PROJECT_SOURCE_DIR}/help/topics/*.md")
file(GLOB guideSources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/docs/*.md" "${PROJECT_SOURCE_DIR}/docs/pictures/*.png")
add_custom_command(OUTPUT "${helpFile}" COMMAND "${PROJECT_SOURCE_DIR}/help/build.py" "${helpFile}"
                   DEPENDS ${helpSources} VERBATIM)
add_custom_command(OUTPUT "${guide}" COMMAND "${PROJECT_SOURCE_DIR}/help/guide.py" "${guide}"
                   DEPENDS ${helpSources} ${guideSources} VERBATIM)

# A double-click opens them in Notepad, which on an older Windows understands no other line ends than CR LF.
configure_file("${PROJECT_SOURCE_DIR}/LICENSE" "${PROJECT_BINARY_DIR}/LICENSE.txt" @ONLY NEWLINE_STYLE DOS)
configure_file("${PROJECT_SOURCE_DIR}/CHANGELOG.md" "${PROJECT_BINARY_DIR}/CHANGELOG.txt" @ONLY NEWLINE_STYLE DOS)

get_target_property(bootSector bootsect PROGRAM)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/data/" DESTINATION .)
install(TARGETS velbooter velbooter_com bfi cabarc RUNTIME DESTINATION .)
install(FILES "${bootSector}" DESTINATION files)
get_property(realmodeTargets GLOBAL PROPERTY VELBOOTER_REALMODE)
foreach(target IN LISTS realmodeTargets)
    get_target_property(program ${target} PROGRAM)
    get_target_property(folder ${target} SHIPPED_IN)
    install(FILES "${program}" DESTINATION "${folder}")
endforeach()
install(FILES "${helpFile}" "${guide}" "${PROJECT_BINARY_DIR}/LICENSE.txt" "${PROJECT_BINARY_DIR}/CHANGELOG.txt"
        DESTINATION .)
add_custom_target(shipped DEPENDS velbooter velbooter_com bfi cabarc bootsect ${realmodeTargets} "${helpFile}" "${guide}")

# What the programs are built with at the time of configuring.
set(CPACK_VELBOOTER_TOOLCHAIN "${PROJECT_BINARY_DIR}/toolchain.txt")
execute_process(COMMAND "${PROJECT_SOURCE_DIR}/scripts/describe-toolchain.sh" "${CMAKE_CXX_COMPILER}"
                OUTPUT_FILE "${CPACK_VELBOOTER_TOOLCHAIN}" COMMAND_ERROR_IS_FATAL ANY)

# CPack's own ZIP files reveal who packed them and the order of the files on their disk, so CPack only collects the
# files.
set(CPACK_GENERATOR External)
set(CPACK_EXTERNAL_ENABLE_STAGING ON)
set(CPACK_EXTERNAL_PACKAGE_SCRIPT "${CMAKE_CURRENT_LIST_DIR}/PackageZip.cmake")
set(CPACK_PACKAGE_FILE_NAME "velbooter-${PROJECT_VERSION}-${VELBOOTER_ARCHITECTURE}")
set(CPACK_PACKAGE_CHECKSUM SHA256)
set(CPACK_VERBATIM_VARIABLES ON)
include(CPack)
