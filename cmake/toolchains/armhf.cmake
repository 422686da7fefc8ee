# ARMv7 phones, hard float. An emulator of the processor runs these programs.
set(TARNWICK_ARCHITECTURE armhf)
set(TARNWICK_TRIPLET arm-linux-gnueabihf)
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(CMAKE_CXX_FLAGS_INIT "-march=armv7-a+fp -mfloat-abi=hard -mthumb")
include(${CMAKE_CURRENT_LIST_DIR}/foreign-debian.cmake)
set(CMAKE_CROSSCOMPILING_EMULATOR
    ${CMAKE_SYSROOT}/../qemu-arm-static -L ${CMAKE_SYSROOT}
    -E LD_LIBRARY_PATH=${TARNWICK_LIBRARY_PATH})
