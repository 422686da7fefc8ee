#pragma once

#include "shells/settings/files/MixerFile.hpp"

#include <filesystem>
#include <vector>

namespace settings {

/// Whether the mixer starts with the session. Two files have a say in that: the XDG autostart file,
/// of which the user's one stands in place of the system's; and, in sessions that systemd runs,
/// which leave that file aside, the mixer's unit, which a user masks by a link to /dev/null.
///
///     Autostart autostart;
///     showSwitch(autostart.isOn());
///     if (const auto trouble = autostart.set(Autostart::Start::No)) tell(*trouble);
///
/// A change holds from the next session on. Edits keep every other key, comment and translation.
class Autostart {
 public:
    /// Folders of configuration files.
    struct Folders {
        std::filesystem::path user;  ///< $XDG_CONFIG_HOME.
        std::vector<std::filesystem::path>
            system;  ///< $XDG_CONFIG_DIRS; the first one counts most.
        /// Where units of users are installed; empty on a system that systemd doesn't run.
        std::vector<std::filesystem::path> units{};
    };
    /// Those of this system and its environment.
    static Folders folders();

    explicit Autostart(Folders folders = Autostart::folders()) : folders_(std::move(folders)) {}

    /// Read anew at each call.
    bool isOn() const;

    enum class Start { No, Yes };
    [[nodiscard]] Trouble set(Start start) const;

 private:
    std::filesystem::path userFile() const;
    std::filesystem::path systemFile() const;
    std::filesystem::path mask() const;
    bool hasUnit() const;
    bool isMasked() const;
    Trouble setInFile(Start start) const;
    Trouble setMask(Start start) const;

    Folders folders_;
};

}  // namespace settings
