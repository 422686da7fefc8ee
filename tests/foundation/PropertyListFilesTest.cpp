#include "backends/plist/PlistCodec.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"
#include "tests/foundation/TemporaryFolder.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

using Array = PropertyValue::Array;
using Dictionary = PropertyValue::Dictionary;

class PropertyListFiles : public testing::Test {
 protected:
    PropertyListFiles() { NSPropertyList::setCodec(std::make_shared<PlistCodec>()); }
    ~PropertyListFiles() override { NSPropertyList::setCodec(nullptr); }

    bool write(const std::string& name, const PropertyValue& value) const {
        return NSPropertyList::writeToFileAtomically(value, folder / name);
    }
    PropertyValue array(const std::string& name) const {
        return NSPropertyList::arrayWithContentsOfFile(folder / name);
    }
    PropertyValue dictionary(const std::string& name) const {
        return NSPropertyList::dictionaryWithContentsOfFile(folder / name);
    }

    TemporaryFolder folder;
    const PropertyValue categories{
        Array{PropertyValue(Dictionary{{"categoryName", PropertyValue("Ringtone")}})}};
    const PropertyValue settings{Dictionary{{"selectedSkin", PropertyValue("x")}}};
};

TEST_F(PropertyListFiles, ReadWhatWasWritten) {
    ASSERT_TRUE(write("c.plist", categories));
    EXPECT_EQ(array("c.plist"), categories);
    ASSERT_TRUE(write("s.plist", settings));
    EXPECT_EQ(dictionary("s.plist"), settings);
}

TEST_F(PropertyListFiles, AreNilWithAnotherKindOfRoot) {
    ASSERT_TRUE(write("c.plist", categories));
    ASSERT_TRUE(write("s.plist", settings));
    ASSERT_TRUE(write("t.plist", PropertyValue("text")));
    EXPECT_TRUE(dictionary("c.plist").isNil());
    EXPECT_TRUE(array("s.plist").isNil());
    EXPECT_TRUE(array("t.plist").isNil());
    EXPECT_TRUE(dictionary("t.plist").isNil());
}

TEST_F(PropertyListFiles, AreNilWhenTheyCannotBeRead) {
    EXPECT_TRUE(array("missing.plist").isNil());
    EXPECT_TRUE(array("no/such/folder.plist").isNil());
    EXPECT_TRUE(NSPropertyList::arrayWithContentsOfFile("").isNil());
    folder.write("empty.plist", "");
    EXPECT_TRUE(array("empty.plist").isNil());
    folder.write("text.plist", "not a property list");
    EXPECT_TRUE(array("text.plist").isNil());
}

TEST_F(PropertyListFiles, AreNilWhenTheyAreNoFiles) {
    std::filesystem::create_directory(folder / "dir.plist");
    EXPECT_TRUE(array("dir.plist").isNil());
    // Opening a pipe that nobody writes to, or reading on from a device, would never end.
    ASSERT_EQ(mkfifo((folder / "pipe.plist").c_str(), 0600), 0);
    EXPECT_TRUE(array("pipe.plist").isNil());
    EXPECT_TRUE(NSPropertyList::arrayWithContentsOfFile("/dev/zero").isNil());
    std::filesystem::create_symlink("loop.plist", folder / "loop.plist");
    EXPECT_TRUE(array("loop.plist").isNil());
}

TEST_F(PropertyListFiles, AreNotReadPastAZeroByteInTheirName) {
    ASSERT_TRUE(write("c.plist", categories));
    EXPECT_TRUE(array(std::string("c.plist\0x", 9)).isNil());
    EXPECT_FALSE(write(std::string("c.plist\0x", 9), settings));
    EXPECT_EQ(array("c.plist"), categories);
}

TEST_F(PropertyListFiles, AreReadThroughSymbolicLinks) {
    ASSERT_TRUE(write("c.plist", categories));
    std::filesystem::create_symlink("c.plist", folder / "link.plist");
    EXPECT_EQ(array("link.plist"), categories);
}

TEST_F(PropertyListFiles, AreReadUpToTheLargestSizeOnly) {
    const std::string start = "<array><string>";
    const std::string end = "</string></array>";
    const std::size_t room = NSPropertyList::maximumFileBytes - start.size() - end.size();
    folder.write("largest.plist", start + std::string(room, 'x') + end);
    folder.write("larger.plist", start + std::string(room + 1, 'x') + end);
    EXPECT_FALSE(array("largest.plist").isNil());
    EXPECT_TRUE(array("larger.plist").isNil());
}

TEST_F(PropertyListFiles, AreNeitherReadNorWrittenWithoutACodec) {
    ASSERT_TRUE(write("c.plist", categories));
    NSPropertyList::setCodec(nullptr);
    EXPECT_TRUE(array("c.plist").isNil());
    EXPECT_FALSE(write("new.plist", categories));
    EXPECT_EQ(folder.count(), 1U);
}

/// Answers and writes what a test wants.
struct FakeCodec : NSPropertyListCodec {
    DecodedPropertyList decode(std::string_view) const override {
        if (value) return *value;
        return Failure{PropertyListFault{}};
    }
    std::vector<TextPlace> placesOf(std::string_view,
                                    std::span<const PropertyListPath> paths) const override {
        return std::vector<TextPlace>(paths.size());
    }
    std::optional<std::string> encode(const PropertyValue&) const override { return bytes; }
    std::optional<PropertyValue> value;
    std::optional<std::string> bytes;
};

PropertyValue nestedArrays(int depth) {
    PropertyValue value(Array{});
    for (int level = 1; level < depth; ++level)
        value = PropertyValue(Array{value});
    return value;
}

TEST_F(PropertyListFiles, AreNilOrRefusedBeyondTheGreatestDepthWhateverTheCodecSays) {
    const auto codec = std::make_shared<FakeCodec>();
    NSPropertyList::setCodec(codec);
    codec->bytes = "x";
    folder.write("deep.plist", "x");
    codec->value = nestedArrays(NSPropertyList::maximumDepth);
    EXPECT_FALSE(array("deep.plist").isNil());
    EXPECT_TRUE(write("deep.plist", *codec->value));
    codec->value = nestedArrays(NSPropertyList::maximumDepth + 1);
    EXPECT_TRUE(array("deep.plist").isNil());
    EXPECT_FALSE(write("deep.plist", *codec->value));
}

TEST_F(PropertyListFiles, AreNotWrittenWhenTheyCouldNotBeReadAgain) {
    const auto codec = std::make_shared<FakeCodec>();
    NSPropertyList::setCodec(codec);
    codec->bytes = std::string(NSPropertyList::maximumFileBytes, 'x');
    EXPECT_TRUE(write("a.plist", categories));
    codec->bytes = std::string(NSPropertyList::maximumFileBytes + 1, 'x');
    EXPECT_FALSE(write("b.plist", categories));
    codec->bytes = std::nullopt;
    EXPECT_FALSE(write("b.plist", categories));
    EXPECT_EQ(folder.count(), 1U);
}

TEST_F(PropertyListFiles, LieWhereTheFixedFolderReallyIs) {
    setPreferencesDirectory(folder / "prefs");
    const std::string path = std::string(fixedPreferencesDirectory) + "c.plist";
    EXPECT_TRUE(NSPropertyList::writeToFileAtomically(categories, path));
    EXPECT_EQ(NSPropertyList::arrayWithContentsOfFile(path), categories);
    EXPECT_EQ(array("prefs/c.plist"), categories);
    setPreferencesDirectory("");
}

}  // namespace
