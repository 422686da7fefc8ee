#include "tests/support/RecordingCanvas.hpp"
#include "tests/uikit/TestViews.hpp"

#include <algorithm>
#include <random>

namespace {
using Rects = std::vector<CGRect>;

class DamageTest : public testing::Test {
 protected:
    DamageTest() { window->takeDamage(); }
    void expectNoOverlap() const {
        const Rects& rects = window->damage();
        for (std::size_t a = 0; a < rects.size(); ++a)
            for (std::size_t b = a + 1; b < rects.size(); ++b)
                EXPECT_FALSE(CGRectIntersectsRect(rects[a], rects[b]));
    }
    std::shared_ptr<UIWindow> window = makeWindow();
};

bool covered(const Rects& rects, const CGPoint& point) {
    return std::any_of(rects.begin(), rects.end(),
                       [&](const CGRect& rect) { return CGRectContainsPoint(rect, point); });
}
}  // namespace

TEST(Damage, OfANewWindowIsAllOfIt) {
    EXPECT_EQ(makeWindow()->damage(), Rects{CGRectMake(0, 0, 320, 270)});
    EXPECT_TRUE(makeWindow(0, 0)->damage().empty());
}

TEST_F(DamageTest, IsTakenOnce) {
    window->setNeedsDisplay();
    EXPECT_EQ(window->takeDamage(), Rects{window->bounds()});
    EXPECT_TRUE(window->takeDamage().empty());
}

TEST_F(DamageTest, OfAViewIsWhatItPaintsOnInWindowCoordinates) {
    const auto row = add(window, CGRectMake(10, 20, 100, 100));
    const auto view = add<PaintedView>(row, CGRectMake(5, 5, 10, 10));
    window->takeDamage();
    view->setNeedsDisplay();
    EXPECT_EQ(window->takeDamage(), Rects{CGRectMake(15, 25, 10, 10)});
    view->setNeedsDisplayInRect(CGRectMake(2, 2, 3, 3));
    EXPECT_EQ(window->takeDamage(), Rects{CGRectMake(17, 27, 3, 3)});
    view->setNeedsDisplayInRect(CGRectMake(8, 8, 300, 300));
    EXPECT_EQ(window->takeDamage(), Rects{CGRectMake(23, 33, 2, 2)});
    view->setNeedsDisplayInRect(CGRectMake(50, 50, 3, 3));
    view->setNeedsDisplayInRect({});
    EXPECT_TRUE(window->damage().empty());
}

TEST_F(DamageTest, IsWholePoints) {
    const auto view = add(window, CGRectMake(10.4, 10.4, 5, 5));
    window->takeDamage();
    view->setNeedsDisplay();
    EXPECT_EQ(window->damage(), Rects{CGRectMake(10, 10, 6, 6)});
}

TEST_F(DamageTest, IsClippedToTheWindow) {
    const auto view = add(window, CGRectMake(-10, 260, 100, 100));
    EXPECT_EQ(window->takeDamage(), Rects{CGRectMake(0, 260, 90, 10)});
    view->setFrame(CGRectMake(320, 0, 10, 10));
    window->takeDamage();
    view->setNeedsDisplay();
    EXPECT_TRUE(window->damage().empty());
}

TEST_F(DamageTest, ComesFromNoHiddenViewNorFromOutsideAWindow) {
    const auto row = add(window, CGRectMake(0, 0, 100, 50));
    const auto view = add(row, CGRectMake(0, 0, 10, 10));
    row->setHidden(true);
    window->takeDamage();
    view->setNeedsDisplay();
    view->setBackgroundColor(UIColor::redColor());
    view->setFrame(CGRectMake(1, 1, 11, 11));
    view->setHidden(true);
    view->removeFromSuperview();
    view->setNeedsDisplay();
    EXPECT_TRUE(window->damage().empty());
}

TEST_F(DamageTest, OfAMovedViewIsItsOldAndItsNewPlace) {
    const auto view = add(window, CGRectMake(0, 0, 10, 10));
    add(view, CGRectMake(0, 0, 20, 5));
    window->takeDamage();
    view->setFrame(CGRectMake(100, 100, 10, 10));
    const Rects damage = window->takeDamage();
    EXPECT_TRUE(covered(damage, {9, 9}));
    EXPECT_TRUE(covered(damage, {19, 4}));
    EXPECT_TRUE(covered(damage, {109, 109}));
    EXPECT_TRUE(covered(damage, {119, 104}));
    EXPECT_FALSE(covered(damage, {50, 50}));
    view->setFrame(view->frame());
    EXPECT_TRUE(window->damage().empty());
}

TEST_F(DamageTest, OfAHiddenShownAddedOrRemovedViewIsItsSubtree) {
    const auto view = std::make_shared<UIView>(CGRectMake(10, 10, 10, 10));
    add(view, CGRectMake(5, 5, 20, 20));
    const Rects expected{CGRectMake(10, 10, 25, 25)};
    window->addSubview(view);
    EXPECT_EQ(window->takeDamage(), expected);
    view->setHidden(true);
    EXPECT_EQ(window->takeDamage(), expected);
    view->setHidden(true);
    EXPECT_TRUE(window->damage().empty());
    view->setHidden(false);
    EXPECT_EQ(window->takeDamage(), expected);
    view->removeFromSuperview();
    EXPECT_EQ(window->takeDamage(), expected);
}

TEST_F(DamageTest, OfAViewTakenToAnotherWindowIsInBoth) {
    const auto other = makeWindow();
    other->takeDamage();
    const auto view = add(window, CGRectMake(10, 10, 10, 10));
    window->takeDamage();
    other->addSubview(view);
    EXPECT_EQ(window->damage(), Rects{view->frame()});
    EXPECT_EQ(other->damage(), Rects{view->frame()});
}

TEST_F(DamageTest, CoversWhatWasPaintedBeforeThePaintBoundsChanged) {
    const auto view = add<PaintedView>(window, CGRectMake(50, 50, 10, 10));
    view->setOverflow(20);
    RecordingCanvas canvas;
    window->layoutAndPaint(canvas, window->bounds());
    window->takeDamage();
    view->setOverflow(0);
    EXPECT_EQ(window->takeDamage(), Rects{CGRectMake(30, 30, 50, 50)});
    window->layoutAndPaint(canvas, window->bounds());
    view->setOverflow(5);
    EXPECT_EQ(window->takeDamage(), Rects{CGRectMake(45, 45, 20, 20)});
}

TEST_F(DamageTest, MergesWhatOverlaps) {
    const auto view = add(window, window->bounds());
    window->takeDamage();
    view->setNeedsDisplayInRect(CGRectMake(0, 0, 10, 10));
    view->setNeedsDisplayInRect(CGRectMake(20, 0, 10, 10));
    EXPECT_EQ(window->damage().size(), 2U);
    view->setNeedsDisplayInRect(CGRectMake(0, 2, 30, 7));
    EXPECT_EQ(window->takeDamage(), Rects{CGRectMake(0, 0, 30, 10)});
}

// A caption over the whole width and the thumb below it, which reaches a little into it.
TEST_F(DamageTest, KeepsApartWhatWouldCostMoreTogether) {
    const auto view = add(window, window->bounds());
    window->takeDamage();
    view->setNeedsDisplayInRect(CGRectMake(0, 0, 300, 20));
    view->setNeedsDisplayInRect(CGRectMake(100, 15, 40, 40));
    EXPECT_EQ(window->takeDamage(),
              (Rects{CGRectMake(0, 0, 300, 20), CGRectMake(100, 20, 40, 35)}));
    view->setNeedsDisplayInRect(CGRectMake(100, 15, 40, 40));
    view->setNeedsDisplayInRect(CGRectMake(0, 25, 300, 20));
    EXPECT_EQ(window->takeDamage(), (Rects{CGRectMake(100, 15, 40, 40), CGRectMake(0, 25, 100, 20),
                                           CGRectMake(140, 25, 160, 20)}));
}

TEST_F(DamageTest, NeverOverlapsAndStaysBoundedAndMissesNothing) {
    std::mt19937 random(1);  // A fixed seed: the same rectangles at every run.
    const auto upTo = [&](int limit) {
        return static_cast<CGFloat>(random() % static_cast<unsigned>(limit));
    };
    const auto view = add(window, window->bounds());
    for (int round = 0; round < 50; ++round) {
        window->takeDamage();
        Rects added;
        for (int i = 0; i < 40; ++i) {
            added.push_back(CGRectMake(upTo(300), upTo(250), 1 + upTo(19), 1 + upTo(19)));
            view->setNeedsDisplayInRect(added.back());
            ASSERT_LE(window->damage().size(), 16U);
            expectNoOverlap();
        }
        for (const CGRect& rect : added) {
            EXPECT_TRUE(covered(window->damage(), rect.origin));
            const CGPoint lastPixel{CGRectGetMaxX(rect) - 1, CGRectGetMaxY(rect) - 1};
            EXPECT_TRUE(covered(window->damage(), lastPixel));
        }
    }
}

TEST_F(DamageTest, OfAResizedWindowIsAllOfItAndNothingElse) {
    window->setNeedsDisplay();
    window->setFrame(CGRectMake(0, 0, 100, 100));
    EXPECT_EQ(window->takeDamage(), Rects{CGRectMake(0, 0, 100, 100)});
    window->setFrame(CGRectMake(50, 0, 100, 200));
    EXPECT_EQ(window->takeDamage(), Rects{CGRectMake(0, 0, 100, 200)});
    window->setFrame(CGRectMake(50, 0, 0, 0));
    EXPECT_TRUE(window->damage().empty());
}

TEST_F(DamageTest, IsToldOfWhenItComesToAWindowThatHadNone) {
    int told = 0;
    window->setDamageHandler([&] { ++told; });
    window->setNeedsDisplay();
    window->setNeedsDisplay();
    EXPECT_EQ(told, 1);
    window->takeDamage();
    window->setFrame(CGRectMake(0, 0, 10, 10));
    EXPECT_EQ(told, 2);
}

TEST_F(DamageTest, HandlerMayReplaceItself) {
    int told = 0;
    window->setDamageHandler([&] { window->setDamageHandler([&] { ++told; }); });
    window->setNeedsDisplay();
    window->takeDamage();
    window->setNeedsDisplay();
    EXPECT_EQ(told, 1);
}

TEST_F(DamageTest, OfAViewThatAsksWhilePaintingWaitsForTheNextPaint) {
    const auto view = add<PaintedView>(window, CGRectMake(0, 0, 10, 10));
    window->takeDamage();
    view->onPaint = [&] { view->setNeedsDisplay(); };
    RecordingCanvas canvas;
    window->layoutAndPaint(canvas, window->bounds());
    EXPECT_EQ(window->damage(), Rects{view->frame()});
    EXPECT_EQ(view->paints, 1);
}

TEST_F(DamageTest, StructureHandlerIsCalledOnceUntilTheNextPaint) {
    int told = 0;
    window->setStructureHandler([&] { ++told; });
    const auto view = add(window, CGRectMake(0, 0, 10, 10));
    view->setHidden(true);
    view->setFrame(CGRectMake(0, 0, 20, 20));
    EXPECT_EQ(told, 1);
    RecordingCanvas canvas;
    window->layoutAndPaint(canvas, window->bounds());
    view->setNeedsDisplay();
    EXPECT_EQ(told, 1);
    view->removeFromSuperview();
    EXPECT_EQ(told, 2);
}

TEST_F(DamageTest, DestroyedWindowCallsNoHandler) {
    int told = 0;
    add(window, CGRectMake(0, 0, 10, 10));
    window->takeDamage();
    window->setDamageHandler([&] { ++told; });
    window->setStructureHandler([&] { ++told; });
    window.reset();
    EXPECT_EQ(told, 0);
}
