#pragma once

#include <cstddef>

/// Bytes that this process has allocated and not freed.
std::size_t allocatedBytes();
/// Descriptors that it has open.
std::ptrdiff_t openDescriptors();
