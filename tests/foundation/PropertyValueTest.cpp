#include "platform/foundation/PropertyValue.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace {

using Array = PropertyValue::Array;
using Dictionary = PropertyValue::Dictionary;

TEST(PropertyValue, IsNilByDefault) {
    EXPECT_TRUE(PropertyValue().isNil());
    EXPECT_FALSE(PropertyValue(false).isNil());
    EXPECT_FALSE(PropertyValue("").isNil());
}

TEST(PropertyValue, AnswersNothingForWhatItIsNot) {
    const PropertyValue number(5);
    EXPECT_EQ(number.string(), std::nullopt);
    EXPECT_EQ(number.array(), nullptr);
    EXPECT_EQ(number.dictionary(), nullptr);
    EXPECT_TRUE(number.objectForKey("a").isNil());
    EXPECT_EQ(PropertyValue(Array{}).dictionary(), nullptr);
    EXPECT_EQ(PropertyValue(Dictionary{}).array(), nullptr);
    EXPECT_EQ(PropertyValue("5").string(), "5");
}

TEST(PropertyValue, FindsTheEntryOfAKey) {
    const PropertyValue value(Dictionary{{"a", PropertyValue(1)}, {"b", PropertyValue("x")}});
    EXPECT_EQ(value.objectForKey("b").string(), "x");
    EXPECT_TRUE(value.objectForKey("c").isNil());
    EXPECT_TRUE(value.objectForKey("").isNil());
}

TEST(PropertyValue, CountsARepeatedKeyOnceWithItsLastValue) {
    const PropertyValue value(
        Dictionary{{"a", PropertyValue(1)}, {"b", PropertyValue(2)}, {"a", PropertyValue(3)}});
    ASSERT_EQ(value.dictionary()->size(), 2U);
    EXPECT_EQ(value.dictionary()->at(0).first, "a");
    EXPECT_EQ(value.dictionary()->at(0).second, PropertyValue(3));
}

TEST(PropertyValue, CountsARepeatedKeyOnceInADictionaryOfAnySize) {
    for (const std::size_t size : {2U, 8U, 9U, 10U, 100U}) {
        Dictionary entries;
        for (std::size_t i = 1; i < size; ++i)
            entries.emplace_back(std::to_string(i), PropertyValue("first"));
        entries.emplace_back("1", PropertyValue("last"));
        const PropertyValue value(std::move(entries));
        EXPECT_EQ(value.dictionary()->size(), size - 1);
        EXPECT_EQ(value.objectForKey("1").string(), "last") << size;
    }
}

TEST(PropertyValue, KeepsItsContentsWhileACopyLives) {
    PropertyValue copy;
    {
        const PropertyValue value(Array{PropertyValue("x")});
        copy = value;
    }
    EXPECT_EQ(copy.array()->at(0).string(), "x");
}

TEST(PropertyValueEquality, ComparesKindAndContents) {
    EXPECT_EQ(PropertyValue(), PropertyValue());
    EXPECT_EQ(PropertyValue("a"), PropertyValue(std::string("a")));
    EXPECT_FALSE(PropertyValue(true) == PropertyValue(1));
    EXPECT_FALSE(PropertyValue(1) == PropertyValue(1.0));
    EXPECT_FALSE(PropertyValue(1) == PropertyValue("1"));
    EXPECT_FALSE(PropertyValue(PropertyValue::Date{1}) == PropertyValue(1.0));
    EXPECT_FALSE(PropertyValue() == PropertyValue(false));
    EXPECT_EQ(PropertyValue(PropertyValue::Data{std::byte{1}}),
              PropertyValue(PropertyValue::Data{std::byte{1}}));
    EXPECT_FALSE(PropertyValue(Array{PropertyValue(1)}) == PropertyValue(Array{PropertyValue(2)}));
    EXPECT_FALSE(PropertyValue(Array{}) == PropertyValue(Dictionary{}));
}

TEST(PropertyValueEquality, ComparesIntegersByTheirNumber) {
    EXPECT_EQ(PropertyValue(5), PropertyValue(std::uint64_t{5}));
    EXPECT_FALSE(PropertyValue(-1) == PropertyValue(std::numeric_limits<std::uint64_t>::max()));
}

TEST(PropertyValueEquality, DoesNotMindTheOrderOfEntries) {
    const PropertyValue forwards(Dictionary{{"a", PropertyValue(1)}, {"b", PropertyValue(2)}});
    const PropertyValue backwards(Dictionary{{"b", PropertyValue(2)}, {"a", PropertyValue(1)}});
    const PropertyValue others(Dictionary{{"a", PropertyValue(1)}, {"c", PropertyValue(2)}});
    const PropertyValue fewer(Dictionary{{"a", PropertyValue(1)}});
    EXPECT_EQ(forwards, backwards);
    EXPECT_FALSE(forwards == others);
    EXPECT_FALSE(forwards == fewer);
    EXPECT_FALSE(fewer == forwards);
}

TEST(MissingText, HasNoPrefixAndIsShownAsNull) {
    EXPECT_EQ(describe(std::nullopt), "(null)");
    EXPECT_EQ(describe(NSString("x")), "x");
    EXPECT_FALSE(hasPrefix(std::nullopt, ""));
    EXPECT_TRUE(hasPrefix(NSString("Speaker2"), "Speaker"));
    EXPECT_FALSE(hasPrefix(NSString("Speake"), "Speaker"));
}

}  // namespace
