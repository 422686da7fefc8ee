# Builds for another Debian architecture with the machine's own Clang, against a folder with that
# architecture's packages (scripts/sysroot). The including file sets:
#   TARNWICK_ARCHITECTURE  Debian's name of it, which is also the folder's
#   TARNWICK_TRIPLET       the compiler's name of it, which is also that of the library folders
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSROOT ${CMAKE_CURRENT_LIST_DIR}/../../build/sysroots/${TARNWICK_ARCHITECTURE})
cmake_path(NORMAL_PATH CMAKE_SYSROOT)
set(CMAKE_LIBRARY_ARCHITECTURE ${TARNWICK_TRIPLET})

set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_CXX_COMPILER_TARGET ${TARNWICK_TRIPLET})
# File sizes and times of 64 bits everywhere.
string(APPEND CMAKE_CXX_FLAGS_INIT " -D_FILE_OFFSET_BITS=64")
foreach(kind EXE SHARED MODULE)
    string(APPEND CMAKE_${kind}_LINKER_FLAGS_INIT " -fuse-ld=lld")
    foreach(folder usr/lib lib)
        string(APPEND CMAKE_${kind}_LINKER_FLAGS_INIT
            " -Wl,-rpath-link,${CMAKE_SYSROOT}/${folder}/${TARNWICK_TRIPLET}")
    endforeach()
endforeach()

# Programs are the machine's, everything else is the other architecture's.
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_DIR} "")
set(ENV{PKG_CONFIG_SYSROOT_DIR} ${CMAKE_SYSROOT})
set(ENV{PKG_CONFIG_LIBDIR}
    "${CMAKE_SYSROOT}/usr/lib/${TARNWICK_TRIPLET}/pkgconfig:${CMAKE_SYSROOT}/usr/share/pkgconfig")
# Named as a folder of its own, the C library's would come before the C++ library's.
set(ENV{PKG_CONFIG_SYSTEM_INCLUDE_PATH} "/usr/include:${CMAKE_SYSROOT}/usr/include")

# Whole paths: the loader's own list ends at what a library says of itself.
set(TARNWICK_LIBRARY_PATH
    ${CMAKE_SYSROOT}/lib/${TARNWICK_TRIPLET}:${CMAKE_SYSROOT}/usr/lib/${TARNWICK_TRIPLET}:${CMAKE_SYSROOT}/usr/lib/${TARNWICK_TRIPLET}/pulseaudio)
