#include "platform/foundation/NSClassRegistry.hpp"
#include "platform/uikit/UIEvent.hpp"

#include <gtest/gtest.h>

namespace {

/// What stands behind the class pointer of a record, in its order.
class Record : public NSObject {
 public:
    std::uint32_t flags = 1;
    std::uint32_t type = 2;
    std::uint32_t ignored1 = 3;
    float x1 = 4;
    float y1 = 5;
    float x2 = 6;
    float y2 = 7;
    std::array<std::uint32_t, 10> ignored2{8};
    std::array<std::uint32_t, 7> ignored3{9};
    float sizeX = 10;
    float sizeY = 11;
    float x3 = 12;
    float y3 = 13;
    std::array<std::uint32_t, 3> ignored4{0, 0, 14};
};

TEST(UITouchesEvent, IsFoundByItsName) {
    const Class* found = NSClassFromString("UITouchesEvent");
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->create()->className(), "UITouchesEvent");
}

TEST(UITouchesEvent, ReadsItsRecordByPosition) {
    UITouchesEvent event;
    event._initWithEvent(Record(), {});
    const UIEventRecord& read = event.record();
    EXPECT_EQ(read.flags, 1U);
    EXPECT_EQ(read.type, 2U);
    EXPECT_EQ(read.ignored1, 3U);
    EXPECT_EQ(read.x1, 4);
    EXPECT_EQ(read.y1, 5);
    EXPECT_EQ(read.x2, 6);
    EXPECT_EQ(read.y2, 7);
    EXPECT_EQ(read.ignored2[0], 8U);
    EXPECT_EQ(read.ignored3[0], 9U);
    EXPECT_EQ(read.sizeX, 10);
    EXPECT_EQ(read.sizeY, 11);
    EXPECT_EQ(read.x3, 12);
    EXPECT_EQ(read.y3, 13);
    EXPECT_EQ(read.ignored4[2], 14U);
}

TEST(UITouchesEvent, HoldsTheTouchesItIsGiven) {
    const UITouchSet touches{std::make_shared<UITouch>(), std::make_shared<UITouch>()};
    UITouchesEvent event;
    EXPECT_TRUE(event.allTouches().empty());
    event._initWithEvent(Record(), touches);
    EXPECT_EQ(event.allTouches(), touches);
}

}  // namespace
