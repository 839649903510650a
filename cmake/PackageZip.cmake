# CPack runs this when it has collected the files: creates the ZIP file, and beside it the text that lists the
# tools.
set(zip "${CPACK_TEMPORARY_DIRECTORY}.zip")
execute_process(COMMAND "${CMAKE_CURRENT_LIST_DIR}/../scripts/make-zip.sh" "${CPACK_TEMPORARY_DIRECTORY}" "${zip}"
                COMMAND_ERROR_IS_FATAL ANY)
set(CPACK_EXTERNAL_BUILT_PACKAGES "${zip}")
file(COPY_FILE "${CPACK_VELBOOTER_TOOLCHAIN}" "${CPACK_PACKAGE_DIRECTORY}/${CPACK_PACKAGE_FILE_NAME}.toolchain.txt")
