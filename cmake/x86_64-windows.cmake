# Toolchain: Debian's cross compiler for 64-bit Windows, with threads of its C++ library. What it builds is run by wine, in
# the build as well, without a display; names of files are UTF-8.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)

# The system aligns the stack to 16 bytes. A precaution: should the compiler store longer vectors there by moves that need
# more, the assembler makes them moves of any alignment. (The routine compiled by gcc 12 has the same bits without.)
set(CMAKE_CXX_FLAGS_INIT -Wa,-muse-unaligned-vector-move)

# Libraries of this system and no others.
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR
  ${CMAKE_COMMAND} -E env --unset=DISPLAY LC_ALL=C.UTF-8 WINEPREFIX=${CMAKE_BINARY_DIR}/wine WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml= /usr/lib/wine/wine64)
