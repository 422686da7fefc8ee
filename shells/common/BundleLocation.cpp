#include "shells/common/BundleLocation.hpp"

#include <filesystem>

namespace shell {
namespace {

constexpr const char* bundleInBuildTree = "../lib/Tarnwick.bundle";

}  // namespace

std::string programDirectory() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::string() : program.parent_path().string();
}

std::string bundlePath(const std::optional<std::string>& chosen, const std::string& programFolder) {
    if (chosen) return *chosen;
    const std::filesystem::path folder(programFolder);
    const auto installed = (folder / TARNWICK_INSTALLED_BUNDLE).lexically_normal();
    for (const auto& place : {installed, (folder / bundleInBuildTree).lexically_normal()}) {
        std::error_code error;
        if (std::filesystem::is_directory(place, error)) return place.string();
    }
    return installed.string();
}

std::string modulePath(const std::string& name, const std::string& programFolder) {
    const std::filesystem::path bundle = bundlePath(std::nullopt, programFolder);
    return (bundle.parent_path() / name).string();
}

}  // namespace shell
