#include "platform/foundation/Result.hpp"

#include <gtest/gtest.h>

#include <memory>

namespace {

Result<std::string> nameOf(int number) {
    if (number < 0) return Failure{"there is no number " + std::to_string(number)};
    return "number " + std::to_string(number);
}

TEST(ResultTest, HoldsAValueOrTheReasonWhyThereIsNone) {
    const auto name = nameOf(3);
    ASSERT_TRUE(name);
    EXPECT_EQ(*name, "number 3");
    EXPECT_EQ(name->size(), 8U);
    const auto none = nameOf(-1);
    ASSERT_FALSE(none);
    EXPECT_EQ(none.error(), "there is no number -1");
}

TEST(ResultTest, TellsAValueFromAReasonOfTheSameType) {
    EXPECT_TRUE(Result<std::string>("text"));
    EXPECT_FALSE(Result<std::string>(Failure{"text"}));
    EXPECT_FALSE(Result<std::string>(Failure{""}));
}

TEST(ResultTest, GivesAValueAway) {
    Result<std::unique_ptr<int>> result = std::make_unique<int>(7);
    const std::unique_ptr<int> taken = *std::move(result);
    EXPECT_EQ(*taken, 7);
}

TEST(ResultTest, HasReasonsOfOtherTypes) {
    const Result<int, int> result = Failure{42};
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), 42);
}

}  // namespace
