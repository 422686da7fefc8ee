#pragma once

#include "platform/foundation/NSClassRegistry.hpp"
#include "platform/foundation/NSObject.hpp"

#include <memory>
#include <string>

/// A folder with an Info.plist, resources, and the module that holds the bundle's code:
///
///     const auto bundle = NSBundle::bundleWithPath("/usr/lib/tarnwick/Tarnwick.bundle");
///     const Class* controller = bundle ? bundle->principalClass() : nullptr;
///     const auto object = controller ? controller->create() : nullptr;
///
/// There is one object for each folder: a second request for it returns the same bundle. Main
/// thread.
class NSBundle : public NSObject {
 public:
    std::string_view className() const override { return "NSBundle"; }

    /// nullptr when the folder does not exist. A folder without a readable Info.plist is a bundle
    /// whose infoDictionary() is nil.
    static std::shared_ptr<NSBundle> bundleWithPath(const std::string& path);
    /// The bundle whose module holds the class's code: the folder that the module was loaded
    /// from. nullptr for a null class.
    static std::shared_ptr<NSBundle> bundleForClass(const Class* cls);

    const std::string& bundlePath() const { return path_; }
    PropertyValue infoDictionary() const { return info_; }
    NSString bundleIdentifier() const;

    /// The path of the resource file NAME.TYPE, nil when the bundle has none. A missing name, a
    /// name with a slash or one that leaves the bundle has none.
    NSString pathForResource(const NSString& name, const NSString& type) const;

    /// Loads the module that Info.plist names (CFBundleExecutable); its classes register
    /// themselves. Loading twice does nothing. False with the reason in loadError().
    bool load();
    const std::string& loadError() const { return loadError_; }
    /// Loads the module if need be and answers the class that Info.plist names
    /// (NSPrincipalClass); nullptr when either is missing, with the reason in loadError().
    const Class* principalClass();

    /// For bundleWithPath().
    NSBundle(std::string path, PropertyValue info);

 private:
    std::string path_;
    PropertyValue info_;
    std::string loadError_;
    void* module_ = nullptr;  ///< Stays loaded until the process ends, as on the platform.
};
