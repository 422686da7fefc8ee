#include "backends/plist/Forms.hpp"
#include "tests/plist/BinaryPlist.hpp"
#include "tests/plist/Xml.hpp"

#include <gtest/gtest.h>

namespace {

constexpr int maximumDepth = NSPropertyList::maximumDepth;

/// Arrays in each other, the innermost empty or holding a text.
BinaryPlist nested(int depth, bool withText) {
    BinaryPlist list;
    std::uint64_t inner = withText ? list.addAscii("x") : list.addArray({});
    for (int level = withText ? 0 : 1; level < depth; ++level)
        inner = list.addArray({inner});
    list.root = inner;
    return list;
}

TEST(HostileBinary, ReadsTheDeepestNestingAndRefusesOneMore) {
    EXPECT_TRUE(decoded(nested(maximumDepth, false).file()));
    EXPECT_FALSE(decoded(nested(maximumDepth + 1, false).file()));
    EXPECT_TRUE(decoded(nested(maximumDepth, true).file()));
    EXPECT_FALSE(decoded(nested(maximumDepth + 1, true).file()));
    EXPECT_FALSE(decoded(nested(60000, false).file()));
}

TEST(HostileBinary, FindsTheDepthBehindObjectsThatAreShared) {
    // Reached first by a short way, where it is shallow enough, then by a long one.
    BinaryPlist list = nested(maximumDepth - 2, false);
    const std::uint64_t shared = list.root;
    const std::uint64_t longWay = list.addArray({list.addArray({shared})});
    list.root = list.addArray({shared, longWay});
    EXPECT_FALSE(decoded(list.file()));
    list.root = list.addArray({shared, list.addArray({shared})});
    EXPECT_TRUE(decoded(list.file()));
}

TEST(HostileBinary, RefusesACircle) {
    BinaryPlist itself;
    itself.addArray({0});
    EXPECT_FALSE(decoded(itself.file()));

    BinaryPlist pair;
    pair.addArray({1});
    pair.addArray({0});
    EXPECT_FALSE(decoded(pair.file()));

    BinaryPlist throughKey;
    throughKey.addDictionary({0}, {0});
    EXPECT_FALSE(decoded(throughKey.file()));
}

TEST(HostileBinary, RefusesAListThatStandsForAHugeTree) {
    BinaryPlist list;
    std::uint64_t inner = list.addAscii("x");
    for (int level = 0; level < 40; ++level)
        inner = list.addArray({inner, inner});
    list.root = inner;
    EXPECT_LT(list.file().size(), 1024U);
    EXPECT_FALSE(decoded(list.file()));
}

/// An array with that many references to one text.
std::string manyOf(std::uint64_t count, const std::string& text) {
    BinaryPlist list;
    const std::uint64_t shared = list.addAscii(text);
    list.root = list.addArray(std::vector<std::uint64_t>(count, shared));
    return list.file();
}

TEST(HostileBinary, ReadsTheLargestTreeAndRefusesOneValueMore) {
    EXPECT_TRUE(decoded(manyOf(maximumValues - 1, "x")));
    EXPECT_FALSE(decoded(manyOf(maximumValues, "x")));
}

TEST(HostileBinary, ReadsAsManyBytesOfTextAsAllowedAndRefusesOneTextMore) {
    const std::string text(32 * 1024, 'x');
    const std::uint64_t most = maximumExpandedBytes / text.size();
    EXPECT_TRUE(decoded(manyOf(most, text)));
    EXPECT_FALSE(decoded(manyOf(most + 1, text)));
}

TEST(HostileBinary, RefusesManyObjectsThatLieOnTopOfEachOther) {
    // Each object of the table is the same large array of all of them.
    BinaryPlist list;
    list.referenceBytes = 2;
    std::vector<std::uint64_t> all;
    for (std::uint64_t i = 0; i < 60000; ++i)
        all.push_back(i);
    list.addArray(all);
    std::string file = list.file();
    const std::size_t trailer = file.size() - 32;
    std::string table;
    for (int i = 0; i < 60000; ++i)
        table += bigEndian(8, 4);
    file.replace(trailer - 4, 4, table);
    file.replace(file.size() - 24, 8, bigEndian(60000, 8));
    EXPECT_FALSE(decoded(file));
}

TEST(HostileBinary, RefusesWrongNumbersInTheTrailer) {
    BinaryPlist list;
    list.root = list.addArray({list.addAscii("x")});
    const std::string good = list.file();
    ASSERT_TRUE(decoded(good));
    const std::size_t trailer = good.size() - 32;
    const auto with = [&](std::size_t offset, const std::string& bytes) {
        std::string file = good;
        return decoded(file.replace(trailer + offset, bytes.size(), bytes));
    };
    const std::string huge(8, '\xFF');
    EXPECT_FALSE(with(6, std::string(1, '\0'))) << "no bytes an offset";
    EXPECT_FALSE(with(6, "\xFF")) << "255 bytes an offset";
    EXPECT_FALSE(with(7, std::string(1, '\0'))) << "no bytes a reference";
    EXPECT_FALSE(with(7, "\x09")) << "nine bytes a reference";
    EXPECT_FALSE(with(8, bigEndian(0, 8))) << "no objects";
    EXPECT_FALSE(with(8, bigEndian(3, 8))) << "more objects than offsets";
    EXPECT_FALSE(with(8, huge)) << "2^64-1 objects";
    EXPECT_FALSE(with(16, bigEndian(2, 8))) << "a root that is no object";
    EXPECT_FALSE(with(16, huge)) << "a huge root";
    EXPECT_FALSE(with(24, bigEndian(7, 8))) << "a table inside the header";
    EXPECT_FALSE(with(24, bigEndian(trailer + 1, 8))) << "a table inside the trailer";
    EXPECT_FALSE(with(24, huge)) << "a table far outside";
}

TEST(HostileBinary, RefusesObjectsThatDoNotLieInTheFile) {
    const auto object = [](const std::string& bytes) {
        BinaryPlist list;
        list.addRaw(bytes);
        return decoded(list.file());
    };
    EXPECT_FALSE(object("\x51")) << "a text of one byte without it";
    EXPECT_FALSE(object("\x61x")) << "half a UTF-16 unit";
    EXPECT_FALSE(object("\x13\x01")) << "an integer cut off";
    EXPECT_FALSE(object("\x14\x01")) << "a long integer cut off";
    EXPECT_FALSE(object("\x15" + std::string(32, 'x'))) << "an integer of 32 bytes";
    EXPECT_FALSE(object("\x33\x01")) << "a date cut off";
    EXPECT_FALSE(object("\x5F")) << "a size that does not come";
    EXPECT_FALSE(object("\x5F\x09")) << "a size that is no integer";
    EXPECT_FALSE(object("\x5F\x13\x01")) << "a size cut off";
    EXPECT_FALSE(object("\x5F\x13" + std::string(8, '\xFF'))) << "2^64-1 bytes";
    EXPECT_FALSE(object("\x6F\x13" + bigEndian(1ULL << 63, 8))) << "a size that doubles to 0";
    EXPECT_FALSE(object("\xDF\x13" + bigEndian(1ULL << 63, 8))) << "the same of a dictionary";
    EXPECT_FALSE(object("\xA1")) << "an array without its element";
    EXPECT_FALSE(object(std::string("\xA1\x00\x01", 3))) << "an element that is no object";
    EXPECT_FALSE(object("\x70")) << "an unknown kind";
}

TEST(HostileBinary, RefusesAKeyThatIsNoText) {
    BinaryPlist list;
    const auto number = list.addRaw("\x10\x01");
    list.root = list.addDictionary({number}, {number});
    EXPECT_FALSE(decoded(list.file()));
}

TEST(HostileBinary, RefusesATextWithAZeroCharacter) {
    for (const std::string& text : {std::string("\x52"
                                                "a\0",
                                                3),
                                    std::string("\x51\0", 2), std::string("\x61\0\0", 3),
                                    std::string("\x62\x01\x00\x00\x00", 5)}) {
        BinaryPlist list;
        const auto key = list.addRaw(text);
        EXPECT_FALSE(decoded(list.file()));
        list.root = list.addDictionary({key}, {key});
        EXPECT_FALSE(decoded(list.file()));
    }
    BinaryPlist list;
    list.addRaw(std::string("\x62\x00\x01\x01\x00", 5));
    EXPECT_EQ(*decoded(list.file()), PropertyValue("\x01\xC4\x80"));
}

TEST(HostileBinary, RefusesTheHeaderAlone) {
    EXPECT_FALSE(decoded("bplist00"));
    EXPECT_FALSE(decoded("bplist00" + std::string(31, '\0')));
    EXPECT_FALSE(decoded("bplist00" + std::string(32, '\0')));
    EXPECT_FALSE(decoded("bplist"));
}

}  // namespace
