#include "tests/support/MixerFiles.hpp"

#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace test {
namespace {

std::string propertyList(const std::string& root) {
    return R"(<?xml version="1.0" encoding="UTF-8"?><plist version="1.0">)" + root + "</plist>\n";
}

std::string recordOf(const CategoryEntry& entry) {
    return "<dict><key>categoryName</key><string>" + entry.categoryName +
           "</string><key>prettyCategoryName</key><string>" + entry.prettyCategoryName +
           "</string><key>visible</key>" + (entry.row == Row::Shown ? "<true/>" : "<false/>") +
           "</dict>";
}

std::filesystem::path newFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "mixer-files-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    return name;
}

}  // namespace

MixerFiles::MixerFiles() : folder_(newFolder()) {}

MixerFiles::~MixerFiles() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

std::filesystem::path MixerFiles::categoryFile() const {
    return folder_ / "org.tarnwick.mixer.categories.plist";
}

std::filesystem::path MixerFiles::settingsFile() const {
    return folder_ / "org.tarnwick.mixerprefs.plist";
}

void MixerFiles::writeCategories(const std::vector<CategoryEntry>& categories) const {
    std::string records;
    for (const CategoryEntry& entry : categories)
        records += recordOf(entry);
    write(categoryFile(), propertyList("<array>" + records + "</array>"));
}

void MixerFiles::writeShownCategories(int count) const {
    std::vector<CategoryEntry> categories;
    for (int i = 0; i < count; ++i)
        categories.push_back({"Category" + std::to_string(i), "Row " + std::to_string(i)});
    writeCategories(categories);
}

void MixerFiles::writeSettings(std::string_view entries) const {
    write(settingsFile(), propertyList("<dict>" + std::string(entries) + "</dict>"));
}

void MixerFiles::write(const std::filesystem::path& file, std::string_view bytes) {
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!stream.flush()) throw std::runtime_error("cannot write " + file.string());
}

}  // namespace test
