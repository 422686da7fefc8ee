#include "platform/foundation/NSBundle.hpp"

#include "platform/foundation/NSPropertyList.hpp"

#include <dlfcn.h>
#include <sys/stat.h>

#include <filesystem>
#include <map>

namespace {

namespace fs = std::filesystem;

/// The path without links and dots; empty when there is nothing.
std::string realPath(const std::string& path) {
    std::error_code error;
    const fs::path real = fs::canonical(path, error);
    return error ? "" : real.string();
}

bool isRegularFile(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

/// Whether a name is an entry of the folder and not a path to another place.
bool isEntryName(std::string_view name) {
    return !name.empty() && name != "." && name != ".." &&
           name.find('/') == std::string_view::npos && name.find('\0') == std::string_view::npos;
}

std::map<std::string, std::shared_ptr<NSBundle>>& bundlesByPath() {
    // Never destroyed: bundles last as long as the process.
    static auto& bundles =
        *std::make_unique<std::map<std::string, std::shared_ptr<NSBundle>>>().release();
    return bundles;
}

/// What Info.plist says under a key that should hold a name; the reason in `error` if it does not.
NSString nameInInfo(const PropertyValue& info, const char* key, std::string& error) {
    const PropertyValue value = info.objectForKey(key);
    if (info.isNil()) {
        error = "Info.plist is missing or cannot be read";
    } else if (value.isNil()) {
        error = std::string("Info.plist has no ") + key;
    } else if (!value.string()) {
        error = std::string(key) + " in Info.plist is not a string";
    } else {
        return value.string();
    }
    return std::nullopt;
}

}  // namespace

NSBundle::NSBundle(std::string path, PropertyValue info)
    : path_(std::move(path)), info_(std::move(info)) {}

std::shared_ptr<NSBundle> NSBundle::bundleWithPath(const std::string& path) {
    const std::string folder = realPath(path);
    std::error_code error;
    if (folder.empty() || !fs::is_directory(folder, error)) return nullptr;
    auto& bundle = bundlesByPath()[folder];
    if (!bundle) {
        bundle = std::make_shared<NSBundle>(
            folder, NSPropertyList::dictionaryWithContentsOfFile(folder + "/Info.plist"));
    }
    return bundle;
}

std::shared_ptr<NSBundle> NSBundle::bundleForClass(const Class* cls) {
    Dl_info module{};
    if (!cls || !cls->code || dladdr(cls->code, &module) == 0 || !module.dli_fname) return nullptr;
    // Modules are loaded by full path. A name without one is the program's own, as it was typed,
    // and tells nothing about where the program lies.
    const bool isProgram = module.dli_fname[0] != '/';
    const std::string file = realPath(isProgram ? "/proc/self/exe" : module.dli_fname);
    if (file.empty()) return nullptr;
    return bundleWithPath(fs::path(file).parent_path().string());
}

NSString NSBundle::bundleIdentifier() const {
    return info_.objectForKey("CFBundleIdentifier").string();
}

NSString NSBundle::pathForResource(const NSString& name, const NSString& type) const {
    if (!name || name->empty()) return std::nullopt;
    const std::string file = type && !type->empty() ? *name + "." + *type : *name;
    if (!isEntryName(file)) return std::nullopt;
    const std::string path = path_ + "/" + file;
    return isRegularFile(path) ? NSString(path) : std::nullopt;
}

bool NSBundle::load() {
    if (module_) return true;
    loadError_.clear();
    const NSString name = nameInInfo(info_, "CFBundleExecutable", loadError_);
    const std::string path = path_ + "/" + name.value_or("");
    if (name && !isEntryName(*name)) {
        loadError_ = "CFBundleExecutable in Info.plist is not the name of a file in the bundle";
    } else if (name && !isRegularFile(path)) {
        loadError_ = "there is no file " + path;
    } else if (name) {
        module_ = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
        const char* reason = module_ ? nullptr : dlerror();
        if (reason) loadError_ = reason;
    }
    return module_ != nullptr;
}

const Class* NSBundle::principalClass() {
    if (!load()) return nullptr;
    loadError_.clear();
    const NSString name = nameInInfo(info_, "NSPrincipalClass", loadError_);
    if (!name) return nullptr;
    const Class* cls = NSClassFromString(*name);
    if (!cls) loadError_ = "the class that NSPrincipalClass names is not in the module: " + *name;
    return cls;
}
