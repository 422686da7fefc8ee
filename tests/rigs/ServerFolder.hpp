#pragma once

#include "tests/processes/ChildProcess.hpp"

#include <cstddef>
#include <filesystem>
#include <string>

namespace rigs {

/// A temporary folder in which a sound server lives with everything it keeps, and that is gone with
/// this. Two servers may have the same one, one after the other: then they have the same address.
class ServerFolder {
 public:
    /// Also leads this process's own client library there, away from the user's files.
    ServerFolder();
    ~ServerFolder();
    ServerFolder(const ServerFolder&) = delete;
    ServerFolder& operator=(const ServerFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path socket() const { return path_ / "pulse" / "native"; }
    /// As clients take it.
    std::string address() const { return "unix:" + socket().string(); }
    std::filesystem::path log() const { return path_ / "log"; }
    /// What the programs have said, for a failure's message.
    std::string logged() const;

    /// How many programs run with the folder as their home.
    std::ptrdiff_t programs() const;

    /// For programs that live in the folder: no bus, no screen, nothing of the user's.
    test::Environment environment() const;

    /// Writes a file of the folder anew, with the folders that it lies in.
    void write(const std::filesystem::path& file, const std::string& text) const;
    /// What the user of the folder's programs has decided on outputs for roles: "apart", "shared"
    /// or "declined". "undecided", which the folder begins with, makes the mixer offer them.
    void writeOutputs(const std::string& choice) const {
        write(outputsFile, "[outputs]\nchoice=" + choice + "\n");
    }
    /// The file in which programs keep that, and how far a switch got; "" if there is none.
    std::string outputs() const;

 private:
    static constexpr const char* outputsFile = "state/tarnwick/outputs";

    std::filesystem::path path_;
};

}  // namespace rigs
