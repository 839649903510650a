# 32-bit Windows.
set(processor i686)
set(VELBOOTER_ARCHITECTURE x86)
include("${CMAKE_CURRENT_LIST_DIR}/mingw.cmake")
