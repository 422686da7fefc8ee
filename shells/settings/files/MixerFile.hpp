#pragma once

#include "backends/glib/FileWatch.hpp"
#include "backends/plist/PropertyListEditor.hpp"
#include "platform/foundation/FileContents.hpp"
#include "platform/foundation/NSRunLoop.hpp"

#include <ctime>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace settings {

/// nullopt where something was done; else why not, as a sentence for people without its full stop.
using Trouble = std::optional<std::string>;

/// A sentence about a change that a property list refuses.
Trouble sentenceFor(const PropertyListEditor::Trouble& refusal);

/// What is known of a file.
struct FileState {
    enum class Kind {
        Missing,     ///< Or empty from the start. What the file would begin with is shown.
        Read,        ///< What it holds is shown.
        Malformed,   ///< It is no property list of the right kind.
        Unreadable,  ///< The system refuses it, or it is too large.
    };
    Kind kind = Kind::Missing;
    std::string reason{};  ///< Of the last two; ends without a full stop.
    TextPlace place{};     ///< Of what is wrong with a malformed one, where that can be told.
    bool isUsable() const { return kind == Kind::Missing || kind == Kind::Read; }
    bool operator==(const FileState&) const = default;
};

/// A copy that is kept beside a file.
struct KeptCopy {
    std::string path;
    std::time_t changed = 0;  ///< When its contents were last written.
    bool isReadable = false;  ///< Whether useCopy() can take it.
};

enum class ChangedBy {
    Us,      ///< An edit through this object.
    Others,  ///< Another program, whose change is shown now.
};

/// One of the mixer's two files as a model: what it holds, and edits that are written at once.
///
///     CategoriesFile file;
///     file.setChangedHandler([&](ChangedBy by) { if (by == ChangedBy::Others) showRows(); });
///     if (const auto trouble = file.setVisible(0, false)) tell(*trouble);
///
/// An edit reads the file again under a lock, finds in it what the user meant, changes nothing else
/// and replaces the file atomically: programs that edit the same file lose nothing of each other's
/// work. The lock is on the folder of the file itself, behind any symbolic link. So nothing is made
/// beside the user's files, and whoever reaches the file by whatever way meets the same lock. An
/// edit that fails leaves the file and what is shown here as they were. While the file is malformed
/// or unreadable every edit is refused, and only startAnew(), reset() and useCopy() touch it.
///
/// Main thread. Waits at most a second, for another program's write.
class MixerFile {
 public:
    MixerFile(const MixerFile&) = delete;
    MixerFile& operator=(const MixerFile&) = delete;

    const FileState& state() const { return shown_.state; }
    /// Where the file is, or would be.
    const std::string& path() const { return path_; }
    /// What is shown: the file's contents; what it begins with where there are none.
    const PropertyValue& root() const { return shown_.root; }

    /// Called after each change of what is shown or of the state, last of all in the call that made
    /// it; may destroy this object. From here on the file is watched: what others write is read 0.1
    /// s after the last change, by the main run loop. A write that leaves the same bytes is not
    /// told.
    void setChangedHandler(std::function<void(ChangedBy)> handler);
    /// Reads the file again at once.
    void refresh();

    /// Writes what the file begins with, for one that is malformed or unreadable, which is kept
    /// beside it. Refused when the file is found to be usable again.
    [[nodiscard]] Trouble startAnew();
    /// The same for any file. A good one is kept as a copy.
    [[nodiscard]] Trouble reset();
    /// Takes a copy's bytes for the file, which is kept as a copy first.
    [[nodiscard]] Trouble useCopy(const KeptCopy& copy);
    /// All kept copies, newest first.
    std::vector<KeptCopy> copies() const;

 protected:
    enum class Root { Array, Dictionary };

    /// `path` is as the widget names it. `initial` is what the file begins with.
    MixerFile(const std::string& path, Root kind, PropertyValue initial);
    ~MixerFile();

    using Change = std::function<Trouble(PropertyListEditor& editor)>;
    /// Makes the change in the file as it is now. `change` answers why it cannot be made.
    [[nodiscard]] Trouble edit(const Change& change);

 private:
    /// What a read or a write comes to.
    struct Contents {
        FileState state;
        std::string bytes{};
        PropertyValue root{};
    };
    enum class Replace { Unusable, Any };

    bool hasRightRoot(const PropertyValue& root) const;
    Contents contentsOf(const std::string& path) const;
    bool readAgain();
    Trouble locked(const std::function<Trouble()>& action);
    Trouble changeNow(const Change& change);
    Trouble replace(const std::string& bytes, Replace what);
    Trouble write(const PropertyListEditor& list, OldFile old);

    std::string path_;
    Root kind_;
    PropertyValue initial_;
    Contents shown_;
    std::function<void(ChangedBy)> handler_;
    std::unique_ptr<glib::FileWatch> watch_;
    OneShotTimer settling_;
};

}  // namespace settings
