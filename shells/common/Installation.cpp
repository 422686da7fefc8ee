#include "shells/common/Installation.hpp"

#include <algorithm>
#include <filesystem>

namespace shell {
namespace {

constexpr const char* bundleExtension = ".bundle";
constexpr const char* mixersBundle = "Tarnwick.bundle";

std::vector<std::string> bundlesIn(const std::filesystem::path& folder) {
    std::vector<std::string> found;
    std::error_code error;
    std::filesystem::directory_iterator entry(folder, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        std::error_code unreadable;
        if (entry->path().extension() == bundleExtension && entry->is_directory(unreadable))
            found.push_back(entry->path().string());
    }
    return found;
}

}  // namespace

std::string programDirectory() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::string() : program.parent_path().string();
}

std::string bundlePath(const std::string& programFolder) {
    return modulePath(mixersBundle, programFolder);
}

std::vector<std::string> bundlePaths(const std::vector<std::string>& chosen,
                                     const std::string& programFolder) {
    if (!chosen.empty()) return chosen;
    const std::filesystem::path mixer = bundlePath(programFolder);
    std::vector<std::string> paths = bundlesIn(mixer.parent_path());
    std::erase(paths, mixer.string());
    std::ranges::sort(paths);
    paths.insert(paths.begin(), mixer.string());
    return paths;
}

std::string modulePath(const std::string& name, const std::string& programFolder) {
    const std::filesystem::path folder(programFolder);
    return (folder / TARNWICK_LIBRARIES_FROM_PROGRAMS / name).lexically_normal().string();
}

std::string catalogFolder(const std::string& programFolder) {
    const auto data = std::filesystem::path(programFolder) / TARNWICK_DATA_FROM_PROGRAMS;
    return (data / "locale").lexically_normal().string();
}

std::vector<std::string> iconPaths(const std::string& name, const std::string& programFolder) {
    const auto theme =
        std::filesystem::path(programFolder) / TARNWICK_DATA_FROM_PROGRAMS / "icons" / "hicolor";
    std::vector<std::string> paths;
    for (const char* size : {"16x16", "24x24", "32x32", "48x48", "64x64", "128x128"})
        paths.push_back((theme / size / "apps" / (name + ".png")).lexically_normal().string());
    return paths;
}

}  // namespace shell
