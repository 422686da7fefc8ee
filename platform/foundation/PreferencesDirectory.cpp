#include "platform/foundation/PreferencesDirectory.hpp"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <vector>

namespace {

std::string& chosenDirectory() {
    static std::string directory;
    return directory;
}

std::string withSlash(std::string directory) {
    if (!directory.ends_with('/')) directory += '/';
    return directory;
}

/// Empty for a variable that is missing or holds a relative path, which means nothing here.
std::string absolutePathFromEnvironment(const char* variable) {
    const char* value = std::getenv(variable);
    return value && value[0] == '/' ? value : "";
}

std::string homeFromUserDatabase() {
    constexpr std::size_t defaultBytes = 16384;
    const long suggested = sysconf(_SC_GETPW_R_SIZE_MAX);
    std::vector<char> buffer(suggested > 0 ? static_cast<std::size_t>(suggested) : defaultBytes);
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || !found) {
        return "";
    }
    return found->pw_dir && found->pw_dir[0] == '/' ? found->pw_dir : "";
}

/// Empty when the user has no home.
std::string configurationDirectory() {
    std::string directory = absolutePathFromEnvironment("XDG_CONFIG_HOME");
    if (!directory.empty()) return directory;
    std::string home = absolutePathFromEnvironment("HOME");
    if (home.empty()) home = homeFromUserDatabase();
    return home.empty() ? "" : withSlash(home) + ".config";
}

}  // namespace

std::string preferencesDirectory() {
    if (!chosenDirectory().empty()) return chosenDirectory();
    std::error_code error;
    if (std::filesystem::is_directory(fixedPreferencesDirectory, error)) {
        return fixedPreferencesDirectory;
    }
    const std::string configuration = configurationDirectory();
    // Without a home nothing can be kept, and reading from the fixed folder finds nothing.
    if (configuration.empty()) return fixedPreferencesDirectory;
    return withSlash(configuration) + "tarnwick/";
}

void setPreferencesDirectory(const std::string& directory) {
    if (directory.empty()) {
        chosenDirectory().clear();
        return;
    }
    // Made absolute now: the program may change its working folder later.
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(directory, error);
    chosenDirectory() = withSlash(error ? directory : absolute.string());
}

std::string resolvedPath(const std::string& path) {
    const std::string_view fixed = fixedPreferencesDirectory;
    if (!path.starts_with(fixed)) return path;
    return preferencesDirectory() + path.substr(fixed.size());
}
