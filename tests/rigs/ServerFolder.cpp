#include "tests/rigs/ServerFolder.hpp"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace rigs {

ServerFolder::ServerFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "sound-XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw std::runtime_error("no temporary folder");
    path_ = pattern;
    std::filesystem::create_directory(path_ / "pulse");
    std::filesystem::permissions(path_ / "pulse", std::filesystem::perms::owner_all);
    for (const auto& [name, value] : environment())
        if (value.empty())
            unsetenv(name.c_str());
        else
            setenv(name.c_str(), value.c_str(), 1);
}

ServerFolder::~ServerFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string ServerFolder::logged() const {
    std::ifstream file(log());
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string ServerFolder::outputs() const {
    std::ifstream file(path_ / outputsFile);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::ptrdiff_t ServerFolder::programs() const {
    const std::string home = "HOME=" + path_.string();
    std::ptrdiff_t count = 0;
    for (const auto& process : std::filesystem::directory_iterator("/proc")) {
        std::ifstream file(process.path() / "environ");
        std::string variable;
        while (std::getline(file, variable, '\0'))
            count += variable == home;
    }
    return count;
}

test::Environment ServerFolder::environment() const {
    const std::string folder = path_.string();
    // Not only unset: without the variable, programs look for a bus at its usual place.
    const std::string noBus = "unix:path=" + folder + "/no-bus";
    return {
        {"HOME", folder},
        {"XDG_RUNTIME_DIR", folder},
        {"XDG_CONFIG_HOME", folder + "/config"},
        {"XDG_STATE_HOME", folder + "/state"},
        {"XDG_DATA_HOME", folder + "/data"},
        {"PIPEWIRE_RUNTIME_DIR", folder},
        {"PULSE_RUNTIME_PATH", folder + "/pulse"},
        {"PULSE_STATE_PATH", folder + "/state"},
        {"DBUS_SESSION_BUS_ADDRESS", noBus},
        {"DBUS_SYSTEM_BUS_ADDRESS", noBus},
        {"DISPLAY", ""},
        {"PULSE_SERVER", ""},
        {"PULSE_SINK", ""},
        {"PULSE_SOURCE", ""},
        {"PULSE_COOKIE", ""},
        {"PIPEWIRE_REMOTE", ""},
        {"LC_ALL", "C"},
    };
}

void ServerFolder::write(const std::filesystem::path& file, const std::string& text) const {
    std::filesystem::create_directories((path_ / file).parent_path());
    std::ofstream stream(path_ / file);
    stream << text;
    if (!stream.flush()) throw std::runtime_error("cannot write " + file.string());
}

}  // namespace rigs
