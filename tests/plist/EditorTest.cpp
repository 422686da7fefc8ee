#include "backends/plist/Forms.hpp"
#include "backends/plist/PropertyListEditor.hpp"
#include "tests/plist/BinaryPlist.hpp"
#include "tests/plist/Xml.hpp"

#include <gtest/gtest.h>

namespace {

using Array = PropertyValue::Array;
using Dictionary = PropertyValue::Dictionary;
using Refusal = PropertyListEditor::Refusal;

PropertyListEditor editing(const std::string& bytes) {
    return *PropertyListEditor::reading(bytes);
}

/// The bytes after a change that must not be refused.
std::string bytesAfter(const std::string& bytes, const auto& change) {
    PropertyListEditor editor = editing(bytes);
    EXPECT_EQ(change(editor), std::nullopt) << bytes;
    EXPECT_EQ(decoded(editor.bytes()), editor.root());
    return editor.bytes();
}

std::string afterSetting(const std::string& bytes, const std::string& key,
                         const PropertyValue& value, const PropertyListPath& path = {}) {
    return bytesAfter(bytes, [&](auto& editor) { return editor.set(path, key, value); });
}

std::string afterRemovingKey(const std::string& bytes, const std::string& key) {
    return bytesAfter(bytes, [&](auto& editor) { return editor.removeKey({}, key); });
}

std::string afterMoving(const std::string& bytes, std::size_t from, std::size_t to) {
    return bytesAfter(bytes, [&](auto& editor) { return editor.move({}, from, to); });
}

std::string afterInserting(const std::string& bytes, std::size_t number,
                           const PropertyValue& value) {
    return bytesAfter(bytes, [&](auto& editor) { return editor.insert({}, number, value); });
}

/// Removes the element, and expects that the bytes come back when it does.
std::string afterRemoving(const std::string& bytes, std::size_t number) {
    PropertyListEditor editor = editing(bytes);
    const auto removed = editor.remove({}, number);
    EXPECT_TRUE(removed);
    const std::string without = editor.bytes();
    EXPECT_EQ(decoded(without), editor.root());
    EXPECT_EQ(editor.restore({}, number, *removed), std::nullopt);
    EXPECT_EQ(editor.bytes(), bytes);
    return without;
}

const PropertyValue yes(true);

TEST(PropertyListEditing, ReplacesAValueWhereItStandsAndNothingElse) {
    const std::string before = "<!-- top -->\n<plist version='1'>\n  <dict  >\n <key>a&amp;b</key>";
    const std::string after =
        " <!-- of a -->\r\n<key>c</key><array><real>1</real></array></dict>\n"
        "</plist>\n<!-- bottom -->  ";
    EXPECT_EQ(afterSetting(before + "\n\t <!-- on? --> <string>x<!-- y --></string >" + after,
                           "a&b", PropertyValue("<1>")),
              before + "\n\t <!-- on? --> <string>&lt;1&gt;</string>" + after);
}

TEST(PropertyListEditing, LeavesTheTextOfAValueThatItHasAlready) {
    const std::string text = "<dict><key>a</key><integer> 0x10 </integer></dict>";
    EXPECT_EQ(afterSetting(text, "a", PropertyValue(16)), text);
    EXPECT_NE(afterSetting(text, "a", PropertyValue(17)), text);
}

TEST(PropertyListEditing, AddsAnEntryBehindTheOthersIndentedAsTheyAre) {
    EXPECT_EQ(afterSetting("<dict>\n    <key>a</key> <true/> <!-- on -->\n  </dict>", "b", yes),
              "<dict>\n    <key>a</key> <true/> <!-- on -->\n    <key>b</key> <true/>\n  </dict>");
    EXPECT_EQ(
        afterSetting("<dict>\n\t<key>a</key>\n\t<true/>\n\n\t<!-- end -->\n</dict>", "b",
                     PropertyValue(Array{yes})),
        "<dict>\n\t<key>a</key>\n\t<true/>\n\t<key>b</key>\n\t<array>\n\t\t<true/>\n\t</array>"
        "\n\n\t<!-- end -->\n</dict>");
}

TEST(PropertyListEditing, KeepsWindowsLineEnds) {
    EXPECT_EQ(afterSetting("<dict>\r\n  <key>a</key>\r\n  <true/>\r\n</dict>\r\n", "b",
                           PropertyValue(Array{yes})),
              "<dict>\r\n  <key>a</key>\r\n  <true/>\r\n  <key>b</key>\r\n  <array>\r\n    <true/>"
              "\r\n  </array>\r\n</dict>\r\n");
    EXPECT_EQ(afterRemoving("<array>\r\n  <true/>\r\n  <false/>\r\n</array>", 0),
              "<array>\r\n  <false/>\r\n</array>");
}

TEST(PropertyListEditing, KeepsAFileOfOneLineOnThatLine) {
    EXPECT_EQ(
        afterSetting("<plist><dict><key>a</key><true/></dict></plist>\n", "b",
                     PropertyValue(Array{yes})),
        "<plist><dict><key>a</key><true/><key>b</key><array><true/></array></dict></plist>\n");
    EXPECT_EQ(afterInserting("<plist><array> <true/> </array></plist>", 1, yes),
              "<plist><array> <true/> <true/> </array></plist>");
    EXPECT_EQ(afterInserting("<plist><array/></plist>", 0, yes),
              "<plist><array><true/></array></plist>");
}

TEST(PropertyListEditing, OpensAnEmptyContainer) {
    const std::string opened =
        "<plist>\n  <dict>\n    <key>a</key>\n    <true/>\n  </dict>\n</plist>";
    for (const char* empty : {"<dict/>", "<dict />", "<dict></dict>", "<dict>\n  </dict>"})
        EXPECT_EQ(afterSetting("<plist>\n  " + std::string(empty) + "\n</plist>", "a", yes),
                  opened);
    EXPECT_EQ(afterSetting("<dict>\n\t<!-- none yet -->\n</dict>", "a", yes),
              "<dict>\n\t<key>a</key>\n\t<true/>\n\t<!-- none yet -->\n</dict>");
    EXPECT_EQ(afterSetting("<array>\n <dict>\n  <key>d</key> <dict/>\n </dict>\n</array>", "a", yes,
                           {"0", "d"}),
              "<array>\n <dict>\n  <key>d</key> <dict>\n   <key>a</key>\n   <true/>\n  </dict>\n "
              "</dict>\n</array>");
}

TEST(PropertyListEditing, BeginsWithADocumentAsTheMixerWritesIt) {
    for (const bool isFilledLater : {false, true}) {
        const PropertyValue list(Dictionary{{"a", PropertyValue(1)}, {"b", PropertyValue("x")}});
        auto editor =
            PropertyListEditor::startingWith(isFilledLater ? PropertyValue(Dictionary{}) : list);
        ASSERT_TRUE(editor);
        EXPECT_EQ(editor->set({}, "a", PropertyValue(1)), std::nullopt);
        EXPECT_EQ(editor->set({}, "b", PropertyValue("x")), std::nullopt);
        EXPECT_EQ(editor->bytes(), PlistCodec().encode(list));
    }
}

TEST(PropertyListEditing, RemovesAnEntryWithItsOwnCommentsAndLine) {
    EXPECT_EQ(afterRemovingKey("<dict> <!-- all -->\n\t<!-- of a -->\n\t<key>a</key>\n\t<true/> "
                               "<!-- on\n -->\n\t<key>b</key>\n\t<true/>\n</dict>",
                               "a"),
              "<dict> <!-- all -->\n\t<key>b</key>\n\t<true/>\n</dict>");
    EXPECT_EQ(afterRemovingKey("<dict>\n\t<key>a</key><true/>\n\t<!-- end -->\n</dict>", "a"),
              "<dict>\n\t<!-- end -->\n</dict>");
    EXPECT_EQ(afterRemovingKey("<dict><key>a</key><true/></dict>", "b"),
              "<dict><key>a</key><true/></dict>");
}

TEST(PropertyListEditing, CountsAKeyThatStandsTwiceWithItsLastValue) {
    const std::string text =
        "<dict><key>a</key><dict><key>b</key><true/></dict>"
        "<key>c</key><true/><key>a</key><dict/></dict>";
    EXPECT_EQ(afterSetting(text, "a", yes),
              "<dict><key>a</key><dict><key>b</key><true/></dict>"
              "<key>c</key><true/><key>a</key><true/></dict>");
    EXPECT_EQ(afterSetting(text, "b", yes, {"a"}),
              "<dict><key>a</key><dict><key>b</key><true/></dict>"
              "<key>c</key><true/><key>a</key><dict><key>b</key><true/></dict></dict>");
    EXPECT_EQ(afterRemovingKey(text, "a"), "<dict><key>c</key><true/></dict>");
}

TEST(PropertyListEditing, GoesRoundALastKeyWithoutAValue) {
    EXPECT_EQ(afterSetting("<dict><key>a</key><true/><key>b</key></dict>", "b", yes),
              "<dict><key>a</key><true/><key>b</key><true/><key>b</key></dict>");
    EXPECT_EQ(afterSetting("<dict>\n <key>b</key>\n</dict>", "c", yes),
              "<dict>\n <key>c</key>\n <true/>\n <key>b</key>\n</dict>");
    EXPECT_EQ(afterRemovingKey("<dict><key>a</key><true/><key>b</key></dict>", "a"),
              "<dict><key>b</key></dict>");
}

const std::string rows =
    "<array> <!-- rows -->\n"
    "\t<!-- A,\n\tthe first -->\n"
    "\t<string>A</string>\n"
    "\n"
    "\t<string>B</string> <!-- b -->\n"
    "\t<string>C</string>\n"
    "\t<!-- end -->\n"
    "</array>\n";

TEST(PropertyListEditing, RemovesAnElementWithItsCommentsAndPutsItBackExactly) {
    EXPECT_EQ(afterRemoving(rows, 0),
              "<array> <!-- rows -->\n\n\t<string>B</string> <!-- b -->\n"
              "\t<string>C</string>\n\t<!-- end -->\n</array>\n");
    EXPECT_EQ(afterRemoving(rows, 1),
              "<array> <!-- rows -->\n\t<!-- A,\n\tthe first -->\n"
              "\t<string>A</string>\n\t<string>C</string>\n"
              "\t<!-- end -->\n</array>\n");
    EXPECT_EQ(afterRemoving(rows, 2),
              "<array> <!-- rows -->\n\t<!-- A,\n\tthe first -->\n"
              "\t<string>A</string>\n\n\t<string>B</string> <!-- b -->\n"
              "\t<!-- end -->\n</array>\n");
    EXPECT_EQ(afterRemoving("<array>\n\t<true/>\n</array>", 0), "<array>\n</array>");
    EXPECT_EQ(afterRemoving("<array>\n\t<true/></array>", 0), "<array></array>");
    EXPECT_EQ(afterRemoving("<array><true/><!-- f --><false/></array>", 1),
              "<array><true/></array>");
    EXPECT_EQ(afterRemoving("<array>\n<true/> <!-- t -->\n<false/><true/></array>", 1),
              "<array>\n<true/> <!-- t --><true/></array>");
}

TEST(PropertyListEditing, MovesAnElementWithItsComments) {
    const std::string moved =
        "<array> <!-- rows -->\n"
        "\t<string>C</string>\n"
        "\t<!-- A,\n\tthe first -->\n"
        "\t<string>A</string>\n"
        "\n"
        "\t<string>B</string> <!-- b -->\n"
        "\t<!-- end -->\n"
        "</array>\n";
    EXPECT_EQ(afterMoving(rows, 2, 0), moved);
    EXPECT_EQ(afterMoving(moved, 0, 2), rows);
    EXPECT_EQ(afterMoving(rows, 1, 1), rows);
}

TEST(PropertyListEditing, InsertsAnElementAtEachPlace) {
    const std::string text = "<array>\n  <true/> <!-- t -->\n  <false/>\n</array>";
    const PropertyValue one(1);
    EXPECT_EQ(afterInserting(text, 0, one),
              "<array>\n  <integer>1</integer>\n  <true/> <!-- t -->\n  <false/>\n</array>");
    EXPECT_EQ(afterInserting(text, 1, one),
              "<array>\n  <true/> <!-- t -->\n  <integer>1</integer>\n  <false/>\n</array>");
    EXPECT_EQ(afterInserting(text, 2, one),
              "<array>\n  <true/> <!-- t -->\n  <false/>\n  <integer>1</integer>\n</array>");
}

TEST(PropertyListEditing, PutsAnElementBackIntoAListThatIsEmptyByNow) {
    PropertyListEditor editor = editing(rows);
    const auto removed = editor.remove({}, 1);
    ASSERT_TRUE(removed);
    PropertyListEditor other = editing("<plist>\n<array/>\n</plist>\n");
    EXPECT_EQ(other.restore({}, 0, *removed), std::nullopt);
    EXPECT_EQ(other.bytes(),
              "<plist>\n<array>\n\n\t<string>B</string> <!-- b -->\n</array>\n</plist>\n");
}

TEST(PropertyListEditing, RefusesWhatIsNotThereAndChangesNothing) {
    PropertyListEditor editor = editing(rows);
    EXPECT_EQ(editor.set({}, "a", yes), Refusal::NoSuchPlace);
    EXPECT_EQ(editor.set({"0"}, "a", yes), Refusal::NoSuchPlace);
    EXPECT_EQ(editor.set({"3", "x"}, "a", yes), Refusal::NoSuchPlace);
    EXPECT_EQ(editor.removeKey({}, "a"), Refusal::NoSuchPlace);
    EXPECT_EQ(editor.insert({}, 4, yes), Refusal::NoSuchPlace);
    EXPECT_EQ(editor.insert({"0"}, 0, yes), Refusal::NoSuchPlace);
    EXPECT_FALSE(editor.remove({}, 3));
    EXPECT_EQ(editor.move({}, 0, 3), Refusal::NoSuchPlace);
    EXPECT_EQ(editor.move({}, 3, 0), Refusal::NoSuchPlace);
    EXPECT_EQ(editor.insert({}, 0, PropertyValue()), Refusal::NoForm);
    EXPECT_EQ(editor.insert({}, 0, PropertyValue("\x01")), Refusal::NoForm);
    PropertyValue deep(Array{});
    for (int depth = 1; depth < NSPropertyList::maximumDepth; ++depth)
        deep = PropertyValue(Array{deep});
    EXPECT_EQ(editor.insert({}, 0, deep), Refusal::NoForm);
    EXPECT_EQ(editor.bytes(), rows);
}

TEST(PropertyListEditing, KeepsAByteOrderMark) {
    EXPECT_EQ(afterSetting("\xEF\xBB\xBF<dict/>\n", "a", yes),
              "\xEF\xBB\xBF<dict>\n\t<key>a</key>\n\t<true/>\n</dict>\n");
}

TEST(PropertyListEditing, KeepsNumbersThatAreNone) {
    PropertyListEditor editor = editing("<array><real>nan</real><true/></array>");
    EXPECT_EQ(editor.move({}, 1, 0), std::nullopt);
    EXPECT_EQ(editor.bytes(), "<array><true/><real>nan</real></array>");
}

TEST(PropertyListEditing, WritesEveryKindInBinaryFormAgain) {
    const Array kinds = {
        PropertyValue(true),
        PropertyValue(false),
        PropertyValue(0),
        PropertyValue(255),
        PropertyValue(256),
        PropertyValue(-1),
        PropertyValue(std::numeric_limits<std::int64_t>::min()),
        PropertyValue(std::numeric_limits<std::int64_t>::max()),
        PropertyValue(std::numeric_limits<std::uint64_t>::max()),
        PropertyValue(1.0 / 3),
        PropertyValue(PropertyValue::Date{-0.5}),
        PropertyValue(PropertyValue::Data(300, std::byte{0xA5})),
        PropertyValue(""),
        PropertyValue("fifteen letters"),
        PropertyValue("\u20AC\U0001F600"),
        PropertyValue("no text: \xFF"),
        PropertyValue(Array{}),
        PropertyValue(
            Dictionary{{"\u00E4", PropertyValue("twice")}, {"b", PropertyValue("twice")}}),
    };
    const auto bytes = writeBinaryPropertyList(PropertyValue(kinds));
    ASSERT_TRUE(bytes);
    EXPECT_EQ(decoded(*bytes), PropertyValue(kinds));
    EXPECT_FALSE(writeBinaryPropertyList(PropertyValue(Array{PropertyValue()})));
    EXPECT_FALSE(writeBinaryPropertyList(PropertyValue(std::string("\0", 1))));
}

TEST(PropertyListEditing, WritesMoreObjectsThanOneByteCounts) {
    Array many;
    for (int i = 0; i < 70'000; ++i)
        many.emplace_back(i);
    const auto bytes = writeBinaryPropertyList(PropertyValue(many));
    ASSERT_TRUE(bytes);
    EXPECT_EQ(decoded(*bytes), PropertyValue(many));
}

TEST(PropertyListEditing, ChangesABinaryListInItsForm) {
    BinaryPlist list;
    const auto key = list.addAscii("unknown");
    const auto value = list.addAscii("kept");
    const auto entry = list.addDictionary({key}, {value});
    list.root = list.addArray({entry, value});
    PropertyListEditor editor = editing(list.file());
    EXPECT_EQ(editor.set({"0"}, "visible", yes), std::nullopt);
    EXPECT_EQ(editor.move({}, 1, 0), std::nullopt);
    EXPECT_TRUE(editor.bytes().starts_with("bplist00"));
    const PropertyValue row(Dictionary{{"unknown", PropertyValue("kept")}, {"visible", yes}});
    EXPECT_EQ(decoded(editor.bytes()), PropertyValue(Array{PropertyValue("kept"), row}));
    const auto removed = editor.remove({}, 1);
    ASSERT_TRUE(removed);
    EXPECT_EQ(editor.restore({}, 0, *removed), std::nullopt);
    EXPECT_EQ(editor.root(), PropertyValue(Array{row, PropertyValue("kept")}));
}

TEST(PropertyListEditing, RefusesABinaryListWithValuesThatWouldBeLost) {
    const std::string halfCharacter("\x61\xD8\x00", 3);
    const std::string wide = '\x14' + std::string(16, '\x01');
    for (const std::string& object : {std::string("\x80\x01", 2), halfCharacter, wide}) {
        BinaryPlist list;
        list.root = list.addArray({list.addRaw(object)});
        PropertyListEditor editor = editing(list.file());
        EXPECT_EQ(editor.insert({}, 0, yes), Refusal::LosesValues);
        EXPECT_EQ(editor.bytes(), list.file());
    }
}

}  // namespace
