#pragma once

#include "platform/foundation/PropertyValue.hpp"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

/// Turns the bytes of a property list into values and back. A shell installs the one it brings.
class NSPropertyListCodec {
 public:
    virtual ~NSPropertyListCodec() = default;
    /// nullopt when the bytes are not a property list that can be read whole. Hostile bytes are
    /// expected: no crash, and no more time or memory than a small multiple of their number.
    virtual std::optional<PropertyValue> decode(std::string_view bytes) const = 0;
    /// XML; nullopt for what has no such form.
    virtual std::optional<std::string> encode(const PropertyValue& value) const = 0;
};

/// Property-list files. Paths under the fixed preferences directory are looked up where it really
/// lies (see PreferencesDirectory.hpp). Main thread. Without an installed codec nothing can be
/// read or written.
class NSPropertyList {
 public:
    /// Larger files are taken as unreadable: both files of the mixer are a few hundred bytes.
    static constexpr std::size_t maximumFileBytes = std::size_t{1024} * 1024;
    /// Deeper nesting is taken as unreadable.
    static constexpr int maximumDepth = 64;

    static void setCodec(std::shared_ptr<const NSPropertyListCodec> codec);

    /// nil when the file is missing, not a regular file, too large, too deep, not a property list,
    /// or has another kind of root.
    static PropertyValue dictionaryWithContentsOfFile(const std::string& path);
    static PropertyValue arrayWithContentsOfFile(const std::string& path);

    /// Writes through a temporary file in the same folder that is flushed to disk and renamed over
    /// the target, so a reader never sees half a file and a failure leaves the old one. The
    /// target's mode is kept (0644 for a new one); missing folders are created; a target that is a
    /// symbolic link stays one and the file behind it is replaced. False on failure.
    static bool writeToFileAtomically(const PropertyValue& value, const std::string& path);
};
