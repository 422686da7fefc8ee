#include "shells/common/BundleLocation.hpp"

#include <algorithm>
#include <filesystem>

namespace shell {
namespace {

constexpr const char* bundleExtension = ".bundle";
constexpr const char* bundleInBuildTree = "../lib/Tarnwick.bundle";

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
    const std::filesystem::path folder(programFolder);
    const auto installed = (folder / TARNWICK_INSTALLED_BUNDLE).lexically_normal();
    for (const auto& place : {installed, (folder / bundleInBuildTree).lexically_normal()}) {
        std::error_code error;
        if (std::filesystem::is_directory(place, error)) return place.string();
    }
    return installed.string();
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
    const std::filesystem::path bundle = bundlePath(programFolder);
    return (bundle.parent_path() / name).string();
}

}  // namespace shell
