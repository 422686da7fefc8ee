#pragma once

#include "platform/foundation/PropertyValue.hpp"
#include "platform/foundation/Result.hpp"

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// A position in a text. Both members count from 1; 0 if unknown.
struct TextPlace {
    int line = 0;
    int column = 0;  ///< In characters.
    bool operator==(const TextPlace&) const = default;
};

/// Why a property list cannot be read, in words that end without a full stop.
struct PropertyListFault {
    TextPlace place;
    std::string reason;
};

using DecodedPropertyList = Result<PropertyValue, PropertyListFault>;

/// The way to a value from the root: the keys of dictionaries, and the numbers of elements.
using PropertyListPath = std::vector<std::string>;

/// Turns the bytes of a property list into values and back. A shell installs the one it brings.
class NSPropertyListCodec {
 public:
    virtual ~NSPropertyListCodec() = default;
    /// Fails when the bytes are not a property list that can be read whole. Hostile bytes are
    /// expected: they cause no crash, and time and memory stay within fixed limits.
    virtual DecodedPropertyList decode(std::string_view bytes) const = 0;
    /// Where those values begin; of an entry of a dictionary, where its key does.
    virtual std::vector<TextPlace> placesOf(std::string_view bytes,
                                            std::span<const PropertyListPath> paths) const = 0;
    /// XML; nullopt for what has no such form.
    virtual std::optional<std::string> encode(const PropertyValue& value) const = 0;
};

/// What is in a file.
struct PropertyListFile {
    enum class State { Missing, Unreadable, Readable };
    State state = State::Missing;
    PropertyValue value;      ///< Of a readable one.
    PropertyListFault fault;  ///< Of an unreadable one.
};

/// Property-list files:
///
///     const PropertyValue root = NSPropertyList::dictionaryWithContentsOfFile(path);
///     const bool shown = root.objectForKey("displayPercentage").boolValue();
///     if (!NSPropertyList::writeToFileAtomically(list, path))
///         complain(program, NSPropertyList::writeFailure(path));
///
/// Paths under the fixed preferences directory are looked up where it really
/// lies (see PreferencesDirectory.hpp). Main thread. Without an installed codec nothing can be
/// read or written.
class NSPropertyList {
 public:
    /// Larger files are taken as unreadable. Both files of the mixer are a few hundred bytes; a
    /// list that another program makes may have many thousand entries.
    static constexpr std::size_t maximumFileBytes = std::size_t{16} * 1024 * 1024;
    /// Deeper nesting is taken as unreadable.
    static constexpr int maximumDepth = 64;

    static void setCodec(std::shared_ptr<const NSPropertyListCodec> codec);

    /// nil when the file is missing, not a regular file, too large, too deep, not a property list,
    /// or has another kind of root.
    static PropertyValue dictionaryWithContentsOfFile(const std::string& path);
    static PropertyValue arrayWithContentsOfFile(const std::string& path);
    /// The same with the reason; any kind of root is readable here.
    static PropertyListFile fileAt(const std::string& path);
    /// See NSPropertyListCodec::placesOf; nowhere in a file that cannot be read.
    static std::vector<TextPlace> placesInFile(const std::string& path,
                                               std::span<const PropertyListPath> paths);

    /// Writes through a temporary file in the same folder that is flushed to disk and renamed over
    /// the target, so a reader never sees half a file and a failure leaves the old one. The
    /// target's mode is kept (0644 for a new one); missing folders are created; a target that is a
    /// symbolic link stays one and the file behind it is replaced. False on failure.
    ///
    /// A target that cannot be read, or has another kind of root, is kept beside the new one, as
    /// "NAME.unreadable-1" or with the next number that is free: there is nothing else that could
    /// bring it back. Where it cannot be kept, nothing is written. The new file is readable then,
    /// whatever the old one's mode.
    static bool writeToFileAtomically(const PropertyValue& value, const std::string& path);
    /// Why the last write to that path failed; empty after one that did not, and before the first.
    static std::string writeFailure(const std::string& path);
};
