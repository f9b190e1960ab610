# Builds for 64-bit Windows on Debian: g++-mingw-w64-x86-64-posix.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
# Debian's places of the header-only libraries, and of the sources of GoogleTest.
set(ZQRMT_HOST_INCLUDE_FOLDER /usr/include CACHE PATH "Where the building system has the header-only libraries")
set(ZQRMT_GOOGLETEST_SOURCES /usr/src/googletest CACHE PATH "Where the building system has the sources of GoogleTest")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# Nothing but the system's own DLLs is needed on the PC; the same sources give the same bytes; no symbols are shipped.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -Wl,--no-insert-timestamp -s")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static -Wl,--no-insert-timestamp -s")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-static -Wl,--no-insert-timestamp -s")
