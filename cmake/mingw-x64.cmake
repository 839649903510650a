# 64-bit Windows. Its programs, the tests among them, run through the project's own Wine prefix.
set(processor x86_64)
set(VELBOOTER_ARCHITECTURE x64)
include("${CMAKE_CURRENT_LIST_DIR}/mingw.cmake")
set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/../scripts/wine.sh")
