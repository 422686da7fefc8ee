#include "platform/uikit/TagIndex.hpp"
#include "platform/uikit/UIView.hpp"

#include <gtest/gtest.h>

namespace {

TEST(TagIndex, FindsTheFirstOfSeveralViewsWithATag) {
    UIView first;
    UIView second;
    UIView third;
    const TagIndex index({{7, &first}, {-2, &second}, {7, &third}});
    EXPECT_EQ(index.find(7), &first);
    EXPECT_EQ(index.find(-2), &second);
}

TEST(TagIndex, FindsNothingForATagThatNoViewHas) {
    UIView view;
    const TagIndex index({{2, &view}, {4, &view}});
    for (const NSInteger tag : {1, 3, 5})
        EXPECT_EQ(index.find(tag), nullptr) << tag;
    EXPECT_EQ(TagIndex({}).find(0), nullptr);
}

}  // namespace
