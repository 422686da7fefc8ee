#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

/// The bytes of a file; nullopt when it cannot be read, holds more than `maximumBytes`, or is
/// anything but a regular file (a pipe or device could keep the caller waiting for ever). Then
/// `error` says why, where it is given.
std::optional<std::string> contentsOfFile(const std::string& path, std::size_t maximumBytes,
                                          std::error_code* error = nullptr);

/// What to do with the replaced file.
enum class OldFile {
    Dropped,
    Kept,    ///< Beside the new one, as one that could not be read; see KeptFile.
    Copied,  ///< Beside the new one, as a copy of the user's.
};

/// Makes the folders above a file that are missing, for their owner alone. Failure shows when the
/// file is opened.
void makeFoldersAbove(const std::string& path);

/// Replaces the file by way of a temporary one beside it; see NSPropertyList::writeToFileAtomically
/// for what holds on success and on failure. An old file that cannot be kept is a failure.
std::error_code writeFileAtomically(const std::string& path, std::string_view bytes,
                                    OldFile old = OldFile::Dropped);
