#include "tests/plist/BinaryPlist.hpp"
#include "tests/plist/Xml.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <limits>

namespace {

using Array = PropertyValue::Array;
using Dictionary = PropertyValue::Dictionary;

/// A list of that one object.
std::optional<PropertyValue> decodedObject(const std::string& object) {
    BinaryPlist list;
    list.addRaw(object);
    return decoded(list.file());
}

std::string doubleBytes(double number) {
    return bigEndian(std::bit_cast<std::uint64_t>(number), 8);
}

TEST(BinaryPropertyList, ReadsEveryKindOfValue) {
    EXPECT_EQ(*decodedObject("\x08"), PropertyValue(false));
    EXPECT_EQ(*decodedObject("\x09"), PropertyValue(true));
    EXPECT_EQ(*decodedObject("\x22" + bigEndian(std::bit_cast<std::uint32_t>(0.5F), 4)),
              PropertyValue(0.5));
    EXPECT_EQ(*decodedObject("\x23" + doubleBytes(0.1)), PropertyValue(0.1));
    EXPECT_EQ(*decodedObject("\x33" + doubleBytes(1e10)), PropertyValue(PropertyValue::Date{1e10}));
    EXPECT_EQ(*decodedObject(std::string("\x42\x00\xFF", 3)),
              PropertyValue(PropertyValue::Data{std::byte{0}, std::byte{0xFF}}));
    EXPECT_EQ(*decodedObject("\x52"
                             "ab"),
              PropertyValue("ab"));
    EXPECT_EQ(*decodedObject(std::string("\x63\x00\x41\xD8\x3D\xDE\x00", 7)),
              PropertyValue("A\U0001F600"));
}

TEST(BinaryPropertyList, ReadsIntegersOfEverySize) {
    EXPECT_EQ(*decodedObject("\x10\xFF"), PropertyValue(255));
    EXPECT_EQ(*decodedObject("\x11" + bigEndian(65535, 2)), PropertyValue(65535));
    EXPECT_EQ(*decodedObject("\x12" + bigEndian(4294967295U, 4)),
              PropertyValue(std::int64_t{4294967295}));
    EXPECT_EQ(*decodedObject("\x13" + std::string(8, '\xFF')), PropertyValue(-1));
    EXPECT_EQ(*decodedObject("\x14" + bigEndian(0, 8) + std::string(8, '\xFF')),
              PropertyValue(std::numeric_limits<std::uint64_t>::max()));
}

TEST(BinaryPropertyList, ReadsContainersAndSharedObjects) {
    BinaryPlist list;
    const auto key = list.addAscii("visible");
    const auto yes = list.addRaw("\x09");
    const auto record = list.addDictionary({key}, {yes});
    list.root = list.addArray({record, record});
    const PropertyValue expected(Dictionary{{"visible", PropertyValue(true)}});
    EXPECT_EQ(*decoded(list.file()), PropertyValue(Array{expected, expected}));
}

TEST(BinaryPropertyList, ReadsATextWhoseLengthNeedsItsOwnNumber) {
    BinaryPlist list;
    const std::string text(1000, 'x');
    list.addAscii(text);
    EXPECT_EQ(*decoded(list.file()), PropertyValue(text));
}

TEST(BinaryPropertyList, LeavesNoValueWhereItHasNoKindForIt) {
    BinaryPlist list;
    const auto uid = list.addRaw("\x80\x05");
    const auto key = list.addAscii("uid");
    const auto dictionary = list.addDictionary({key}, {uid});
    list.root = list.addArray({uid, dictionary});
    EXPECT_EQ(*decoded(list.file()),
              PropertyValue(Array{PropertyValue(), PropertyValue(Dictionary{})}));
}

TEST(BinaryPropertyList, KeepsTheBytesOfATextThatIsNotAscii) {
    EXPECT_EQ(*decodedObject("\x52\xFF\x80"), PropertyValue("\xFF\x80"));
}

TEST(BinaryPropertyList, RefusesEveryTruncation) {
    BinaryPlist list;
    const auto text = list.addAscii("Audio/Video");
    list.root = list.addArray({text, text});
    const std::string whole = list.file();
    ASSERT_TRUE(decoded(whole));
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_FALSE(decoded(whole.substr(0, length))) << length;
    }
}

}  // namespace
