# Cross-compiling for 64-bit Windows with Debian's MinGW-w64 (the POSIX threading variant, which
# gives std::thread and std::filesystem). Programs link the C and C++ runtimes statically, so
# an .exe needs no DLL beside it.
#
#   cmake -S . -B build-win -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64.cmake
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(QUILLER_MINGW_PREFIX x86_64-w64-mingw32)
find_program(CMAKE_C_COMPILER NAMES ${QUILLER_MINGW_PREFIX}-gcc-posix ${QUILLER_MINGW_PREFIX}-gcc
             REQUIRED)
find_program(CMAKE_CXX_COMPILER NAMES ${QUILLER_MINGW_PREFIX}-g++-posix ${QUILLER_MINGW_PREFIX}-g++
             REQUIRED)
find_program(CMAKE_RC_COMPILER NAMES ${QUILLER_MINGW_PREFIX}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${QUILLER_MINGW_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")

# GCC 12 warns wrongly about overlapping copies when a std::string is assigned a literal.
set(CMAKE_CXX_FLAGS_INIT "-Wno-restrict")

# Programs built here run under Wine on the build machine (tests and their discovery), in a Wine
# prefix inside the build directory.
set(CMAKE_CROSSCOMPILING_EMULATOR
    ${CMAKE_CURRENT_LIST_DIR}/wine-run.sh --prefix ${CMAKE_BINARY_DIR}/wineprefix)
