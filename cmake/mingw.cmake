# What both Windows toolchains share; included with `processor` set. They are Debian's mingw-w64 with posix threads: the
# win32-thread variant of GCC 12 lacks std::thread and std::mutex. The tests run under Wine: scripts/run-tests.sh selects the one
# for the preset.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/../tests/support/run-in-wine.sh")
set(CMAKE_SYSTEM_PROCESSOR ${processor})
set(CMAKE_C_COMPILER ${processor}-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER ${processor}-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER ${processor}-w64-mingw32-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${processor}-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
