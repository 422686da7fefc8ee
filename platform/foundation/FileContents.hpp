#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// The bytes of a file; nullopt when it cannot be read, holds more than `maximumBytes`, or is
/// anything but a regular file (a pipe or device could keep the caller waiting for ever).
std::optional<std::string> contentsOfFile(const std::string& path, std::size_t maximumBytes);

/// Replaces the file by way of a temporary one beside it; see NSPropertyList::writeToFileAtomically
/// for what holds on success and on failure.
bool writeFileAtomically(const std::string& path, std::string_view bytes);
