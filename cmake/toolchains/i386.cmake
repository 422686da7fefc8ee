# 32-bit PCs. The machine runs these programs itself, with their own loader and libraries. Programs
# of the machine that they start pass by libraries of another width.
set(TARNWICK_ARCHITECTURE i386)
set(TARNWICK_TRIPLET i386-linux-gnu)
set(CMAKE_SYSTEM_PROCESSOR i686)
# The x87 unit computes in 80 bits, so a float would not be one.
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse")
include(${CMAKE_CURRENT_LIST_DIR}/foreign-debian.cmake)
string(APPEND CMAKE_EXE_LINKER_FLAGS_INIT
    " -Wl,--dynamic-linker=${CMAKE_SYSROOT}/lib/ld-linux.so.2")
set(CMAKE_CROSSCOMPILING_EMULATOR /usr/bin/env LD_LIBRARY_PATH=${TARNWICK_LIBRARY_PATH})
