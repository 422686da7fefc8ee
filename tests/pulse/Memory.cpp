#include "tests/pulse/Memory.hpp"

#include <malloc.h>

#include <filesystem>

#ifdef __SANITIZE_ADDRESS__
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();  // NOLINT: the sanitizer's name.

std::size_t allocatedBytes() {
    return __sanitizer_get_current_allocated_bytes();
}
#else
std::size_t allocatedBytes() {
    return mallinfo2().uordblks;
}
#endif

std::ptrdiff_t openDescriptors() {
    const std::filesystem::directory_iterator descriptors("/proc/self/fd");
    return std::distance(begin(descriptors), end(descriptors));
}
