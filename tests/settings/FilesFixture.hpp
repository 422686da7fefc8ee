#pragma once

#include "backends/plist/Forms.hpp"
#include "backends/plist/PlistCodec.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"
#include "shells/settings/files/MixerFile.hpp"
#include "tests/support/MixerFiles.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

/// Both files in a preferences folder of their own.
class FilesFixture : public testing::Test {
 protected:
    FilesFixture() { setPreferencesDirectory(files.folder()); }
    ~FilesFixture() override { setPreferencesDirectory(""); }

    static std::string contents(const std::filesystem::path& file) {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    /// The names in the preferences folder, in their order.
    std::vector<std::string> names() const {
        std::vector<std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(files.folder()))
            found.push_back(entry.path().filename());
        std::ranges::sort(found);
        return found;
    }

    test::MixerFiles files;
};

inline bool contains(const settings::Trouble& trouble, const std::string& words) {
    return trouble && trouble->find(words) != std::string::npos;
}
