#include "host/Tarnwick__GSEvent.hpp"
#include "host/Tarnwick__TouchFix.hpp"
#include "platform/foundation/NSDate.hpp"
#include "platform/uikit/UIWindow.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace {

std::shared_ptr<Tarnwick__TouchFix::Touch> touchAt(const CGPoint& point,
                                                   const std::shared_ptr<UIView>& view) {
    auto touch = std::make_shared<Tarnwick__TouchFix::Touch>();
    EXPECT_TRUE(touch->initWithPoint(point, view));
    return touch;
}

const UIEventRecord& recordOf(const std::shared_ptr<UIEvent>& event) {
    return dynamic_cast<const UITouchesEvent&>(*event).record();
}

class TouchFix : public testing::Test {
 protected:
    TouchFix() { window->addSubview(view); }
    std::shared_ptr<UIWindow> window = std::make_shared<UIWindow>(CGRectMake(0, 0, 200, 200));
    std::shared_ptr<UIView> view = std::make_shared<UIView>(CGRectMake(50, 50, 100, 100));
};

TEST_F(TouchFix, FillsATouchThatBeginsNow) {
    const double before = NSDate::timeIntervalSinceReferenceDate();
    const auto touch = touchAt({60.5F, 70.25F}, view);
    const double after = NSDate::timeIntervalSinceReferenceDate();
    EXPECT_EQ(touch->tapCount(), 1);
    EXPECT_EQ(touch->locationInView(nullptr), (CGPoint{60.5F, 70.25F}));
    EXPECT_EQ(touch->previousLocationInView(nullptr), (CGPoint{60.5F, 70.25F}));
    EXPECT_EQ(touch->view(), view);
    EXPECT_EQ(touch->window(), window);
    EXPECT_EQ(touch->phase(), UITouchPhase::Began);
    EXPECT_EQ(touch->touchFlags(), 3);
    EXPECT_GE(touch->timestamp(), before);
    EXPECT_LE(touch->timestamp(), after);
    EXPECT_EQ(touch->className(), "UITouch");
}

TEST_F(TouchFix, TakesThePointAsItStandsAndTheViewFromTheHitTest) {
    const auto touch = touchAt({10, 10}, view);
    EXPECT_EQ(touch->locationInView(nullptr), (CGPoint{10, 10}));
    EXPECT_EQ(touch->view(), window) << "the view given says only which window it is";
}

TEST_F(TouchFix, HasNoViewWithoutAWindow) {
    view->removeFromSuperview();
    EXPECT_EQ(touchAt({60, 60}, view)->view(), nullptr);
    EXPECT_EQ(touchAt({60, 60}, nullptr)->view(), nullptr);
}

TEST_F(TouchFix, RecordsATouchUnderWay) {
    const auto touch = touchAt({60.5F, 70.25F}, view);
    const auto event = Tarnwick__TouchFix::initWithTouch(std::make_shared<UIEvent>(), touch);
    const UIEventRecord& record = recordOf(event);
    EXPECT_EQ(record.flags, 0x03010180U);
    EXPECT_EQ(record.type, 3001U);
    EXPECT_EQ(record.sizeX, 1.0F);
    EXPECT_EQ(record.sizeY, 1.0F);
    for (const float x : {record.x1, record.x2, record.x3})
        EXPECT_EQ(x, 60.5F);
    for (const float y : {record.y1, record.y2, record.y3})
        EXPECT_EQ(y, 70.25F);
    EXPECT_EQ(event->allTouches(), UITouchSet{touch});
}

TEST_F(TouchFix, LeavesTheOtherFieldsZero) {
    const auto event = Tarnwick__TouchFix::initWithTouch(nullptr, touchAt({60, 60}, view));
    const UIEventRecord& record = recordOf(event);
    EXPECT_EQ(record.ignored1, 0U);
    EXPECT_EQ(record.ignored2, decltype(record.ignored2){});
    EXPECT_EQ(record.ignored3, decltype(record.ignored3){});
    EXPECT_EQ(record.ignored4, decltype(record.ignored4){});
}

TEST_F(TouchFix, ClearsTheFlagOfAnEndedTouchAlone) {
    const auto touch = touchAt({60, 60}, view);
    for (const auto phase : {UITouchPhase::Began, UITouchPhase::Moved, UITouchPhase::Stationary,
                             UITouchPhase::Ended, UITouchPhase::Cancelled}) {
        touch->setPhase(phase);
        const auto event = Tarnwick__TouchFix::initWithTouch(nullptr, touch);
        EXPECT_EQ(recordOf(event).flags, phase == UITouchPhase::Ended ? 0x01010180U : 0x03010180U);
    }
}

TEST_F(TouchFix, NeverAnswersTheReceiverAndLetsItGo) {
    auto receiver = std::make_shared<UIEvent>();
    const std::weak_ptr<UIEvent> former = receiver;
    const UIEvent* const address = receiver.get();
    const auto event =
        Tarnwick__TouchFix::initWithTouch(std::move(receiver), touchAt({60, 60}, view));
    EXPECT_NE(event.get(), address);
    EXPECT_TRUE(former.expired());
}

TEST_F(TouchFix, MakesAnEventAtTheOriginOfNoTouch) {
    const auto event = Tarnwick__TouchFix::initWithTouch(nullptr, nullptr);
    ASSERT_NE(event, nullptr);
    EXPECT_TRUE(event->allTouches().empty());
    EXPECT_EQ(recordOf(event).x1, 0.0F);
    EXPECT_EQ(recordOf(event).y3, 0.0F);
    EXPECT_EQ(recordOf(event).flags, 0x03010180U);
}

TEST_F(TouchFix, CarriesAnyNumberThatTheHostMayHand) {
    constexpr float huge = std::numeric_limits<float>::max();
    const auto event = Tarnwick__TouchFix::initWithTouch(nullptr, touchAt({huge, -huge}, view));
    EXPECT_EQ(recordOf(event).x1, huge);
    EXPECT_EQ(recordOf(event).y1, -huge);
    const auto undefined = touchAt({std::numeric_limits<float>::quiet_NaN(), 0}, view);
    EXPECT_EQ(undefined->view(), nullptr) << "such a point lies in no view";
}

TEST(EventRecord, BeginsBehindTheClassPointerAsAClassOfItsOwn) {
    const Tarnwick__GSEvent record;
    const auto* start = reinterpret_cast<const unsigned char*>(&record);
    EXPECT_EQ(reinterpret_cast<const unsigned char*>(&record.flags) - start, 4);
    EXPECT_EQ(sizeof record, 128U);
    EXPECT_EQ(record.className(), "Tarnwick__GSEvent");
}

}  // namespace
