# 64-bit Windows.
set(processor x86_64)
set(VELBOOTER_ARCHITECTURE x64)
include("${CMAKE_CURRENT_LIST_DIR}/mingw.cmake")
