# Debian's mingw-w64 with POSIX threads, for the kind of Windows that LUMBRIX_HOST names; the toolchain files set that.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${LUMBRIX_HOST}-gcc-posix)
set(CMAKE_CXX_COMPILER ${LUMBRIX_HOST}-g++-posix)
set(CMAKE_RC_COMPILER ${LUMBRIX_HOST}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${LUMBRIX_HOST} ${LUMBRIX_CODECS})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES LUMBRIX_CODECS)
# Only what is linked statically goes to people's machines in one file.
set(ZLIB_LIBRARY /usr/${LUMBRIX_HOST}/lib/libz.a CACHE FILEPATH "zlib")
