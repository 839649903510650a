# Run by CPack when the files are collected: makes the ZIP file.
set(zip "${CPACK_TEMPORARY_DIRECTORY}.zip")
execute_process(COMMAND "${CMAKE_CURRENT_LIST_DIR}/../scripts/make-zip.sh" "${CPACK_TEMPORARY_DIRECTORY}" "${zip}"
                COMMAND_ERROR_IS_FATAL ANY)
set(CPACK_EXTERNAL_BUILT_PACKAGES "${zip}")
