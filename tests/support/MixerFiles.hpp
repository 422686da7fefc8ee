#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace test {

enum class Row { Hidden, Shown };

/// One record of the category file.
struct CategoryEntry {
    std::string categoryName;
    std::string prettyCategoryName;
    Row row = Row::Shown;
};

/// A preferences folder of its own, gone with the object, and what stands in its two files.
class MixerFiles {
 public:
    MixerFiles();
    ~MixerFiles();
    MixerFiles(const MixerFiles&) = delete;
    MixerFiles& operator=(const MixerFiles&) = delete;

    const std::filesystem::path& folder() const { return folder_; }
    std::filesystem::path categoryFile() const;
    std::filesystem::path settingsFile() const;

    void writeCategories(const std::vector<CategoryEntry>& categories) const;
    /// As many shown categories of made-up names.
    void writeShownCategories(int count) const;
    /// The settings' entries as XML: "<key>enableDebugLogging</key><true/>".
    void writeSettings(std::string_view entries) const;
    /// Any bytes, over what stands there.
    static void write(const std::filesystem::path& file, std::string_view bytes);

 private:
    std::filesystem::path folder_;
};

}  // namespace test
