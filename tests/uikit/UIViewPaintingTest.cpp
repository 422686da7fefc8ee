#include "tests/support/RecordingCanvas.hpp"
#include "tests/uikit/TestViews.hpp"

namespace {
class LaidOutView : public PaintedView {
 public:
    using PaintedView::PaintedView;
    void layoutSubviews() override {
        ++layouts;
        if (onLayout) onLayout();
    }
    int layouts = 0;
    std::function<void()> onLayout;
};

void paintAll(UIWindow& window) {
    RecordingCanvas canvas;
    window.layoutAndPaint(canvas, window.bounds());
    EXPECT_EQ(canvas.depth(), 0);
}
}  // namespace

TEST(UIViewPainting, PaintsBackgroundsBackToFrontInTheirPlaces) {
    const auto window = makeWindow();
    const auto row = add(window, CGRectMake(10, 20, 100, 50));
    const auto child = add(row, CGRectMake(5, 5, 10, 10));
    const auto last = add(window, CGRectMake(0, 0, 20, 30));
    row->setBackgroundColor(UIColor::redColor());
    child->setBackgroundColor(UIColor::greenColor());
    last->setBackgroundColor(UIColor::blueColor());
    RecordingCanvas canvas;
    window->layoutAndPaint(canvas, window->bounds());
    const auto fills = canvas.ofKind("fill");
    ASSERT_EQ(fills.size(), 3U);
    EXPECT_EQ(fills[0].rect, CGRectMake(10, 20, 100, 50));
    EXPECT_EQ(fills[1].rect, CGRectMake(15, 25, 10, 10));
    EXPECT_EQ(fills[1].clip, CGRectMake(15, 25, 10, 10));
    EXPECT_EQ(fills[2].color, UIColor::blueColor());
}

TEST(UIViewPainting, LeavesAClearBackgroundOut) {
    const auto window = makeWindow();
    window->setBackgroundColor(UIColor::clearColor());
    RecordingCanvas canvas;
    window->layoutAndPaint(canvas, window->bounds());
    EXPECT_TRUE(canvas.operations().empty());
}

TEST(UIViewPainting, PaintsASubviewOutsideItsSuperview) {
    const auto window = makeWindow();
    const auto row = add(window, CGRectMake(0, 0, 50, 50));
    const auto child = add<PaintedView>(row, CGRectMake(100, 0, 50, 50));
    RecordingCanvas canvas;
    window->layoutAndPaint(canvas, CGRectMake(120, 10, 1, 1));
    EXPECT_EQ(child->paints, 1);
}

TEST(UIViewPainting, LeavesOutWhatTheCanvasDoesNotShow) {
    const auto window = makeWindow();
    const auto row = add<PaintedView>(window, CGRectMake(0, 0, 50, 50));
    const auto seen = add<PaintedView>(row, CGRectMake(60, 0, 10, 10));
    const auto unseen = add<PaintedView>(row, CGRectMake(80, 0, 10, 10));
    RecordingCanvas canvas;
    canvas.clip(CGRectMake(65, 0, 10, 10));
    window->layoutAndPaint(canvas, window->bounds());
    EXPECT_EQ(row->paints, 0) << "only a part of it outside its bounds is seen";
    EXPECT_EQ(seen->paints, 1);
    EXPECT_EQ(unseen->paints, 0);
}

TEST(UIViewPainting, CutsEverythingAtTheBoundsOfAViewThatClips) {
    const auto window = makeWindow();
    const auto opening = add(window, CGRectMake(10, 10, 50, 50));
    const auto list = add<PaintedView>(opening, CGRectMake(0, -100, 50, 300));
    list->setBackgroundColor(UIColor::redColor());
    window->takeDamage();
    opening->setClipsToBounds(true);
    EXPECT_EQ(window->takeDamage(), std::vector{CGRectMake(10, 0, 50, 210)});
    RecordingCanvas canvas;
    window->layoutAndPaint(canvas, window->bounds());
    EXPECT_EQ(canvas.ofKind("fill").at(0).clip, CGRectMake(10, 10, 50, 50));
    EXPECT_EQ(canvas.depth(), 0);
    list->setNeedsDisplay();
    EXPECT_EQ(window->takeDamage(), std::vector{CGRectMake(10, 10, 50, 50)});
    list->setNeedsDisplayInRect(CGRectMake(0, 0, 50, 100));
    EXPECT_TRUE(window->damage().empty());
    window->layoutAndPaint(canvas, CGRectMake(10, 60, 50, 50));
    EXPECT_EQ(list->paints, 1);
}

TEST(UIViewPainting, PaintsWhatAViewCutOnceItCutsNoMore) {
    const auto window = makeWindow();
    const auto opening = add(window, CGRectMake(10, 10, 50, 50));
    const auto list = add<PaintedView>(opening, CGRectMake(0, 0, 50, 200));
    opening->setClipsToBounds(true);
    paintAll(*window);
    list->setFrame(CGRectMake(0, 0, 50, 220));
    opening->setClipsToBounds(false);
    RecordingCanvas canvas;
    window->layoutAndPaint(canvas, CGRectMake(10, 225, 1, 1));
    EXPECT_EQ(list->paints, 2);
}

TEST(UIViewPainting, PaintsNeitherHiddenViewsNorTheirSubviews) {
    const auto window = makeWindow();
    const auto row = add(window, CGRectMake(0, 0, 50, 50));
    const auto child = add<PaintedView>(row, CGRectMake(0, 0, 50, 50));
    row->setHidden(true);
    paintAll(*window);
    EXPECT_EQ(child->paints, 0);
    row->setHidden(false);
    paintAll(*window);
    EXPECT_EQ(child->paints, 1);
}

TEST(UIViewPainting, PaintsOnlyWhatMeetsTheDamage) {
    const auto window = makeWindow();
    const auto hit = add<PaintedView>(window, CGRectMake(0, 50, 320, 50));
    const auto above = add<PaintedView>(window, CGRectMake(0, 0, 320, 50));
    const auto below = add<PaintedView>(window, CGRectMake(0, 100, 320, 50));
    below->setOverflow(1);
    RecordingCanvas canvas;
    window->layoutAndPaint(canvas, CGRectMake(0, 50, 320, 49));
    EXPECT_EQ(hit->paints, 1);
    EXPECT_EQ(above->paints, 0);
    EXPECT_EQ(below->paints, 0);
    window->layoutAndPaint(canvas, CGRectMake(0, 99, 320, 1));
    EXPECT_EQ(below->paints, 1);
}

TEST(UIViewPainting, AsksOnlyTheDamagedRowOfManyForItsPlace) {
    const auto window = makeWindow(320, 500000);
    std::vector<std::shared_ptr<PaintedView>> rows;
    for (int row = 0; row < 10000; ++row)
        rows.push_back(add<PaintedView>(window, CGRectMake(0, 50.0 * row, 320, 50)));
    paintAll(*window);
    int before = 0;
    for (const auto& row : rows)
        before += row->asked;
    RecordingCanvas canvas;
    window->layoutAndPaint(canvas, CGRectMake(0, 50, 320, 50));
    int after = 0;
    for (const auto& row : rows)
        after += row->asked;
    EXPECT_LE(after - before, 2);
    EXPECT_EQ(rows[1]->paints, 2);
    EXPECT_EQ(rows[2]->paints, 1);
}

TEST(UIViewPainting, FollowsAChangeDeepInATreeThatWasPainted) {
    const auto window = makeWindow();
    const auto row = add(window, CGRectMake(0, 0, 50, 50));
    const auto child = add<PaintedView>(row, CGRectMake(0, 0, 50, 50));
    paintAll(*window);
    child->setFrame(CGRectMake(200, 200, 50, 50));
    RecordingCanvas canvas;
    window->layoutAndPaint(canvas, CGRectMake(210, 210, 1, 1));
    EXPECT_EQ(child->paints, 2);
    child->setHidden(true);
    child->setFrame(CGRectMake(100, 100, 50, 50));
    child->setHidden(false);
    window->layoutAndPaint(canvas, CGRectMake(110, 110, 1, 1));
    EXPECT_EQ(child->paints, 3);
}

TEST(UIViewPainting, FollowsAMovedViewWithWhatIsOutsideItsBounds) {
    const auto window = makeWindow();
    const auto row = add(window, CGRectMake(0, 0, 50, 50));
    const auto child = add<PaintedView>(row, CGRectMake(100, 0, 10, 10));
    paintAll(*window);
    row->setFrame(CGRectMake(0, 100, 50, 50));
    RecordingCanvas canvas;
    window->layoutAndPaint(canvas, CGRectMake(105, 105, 1, 1));
    EXPECT_EQ(child->paints, 2);
    window->layoutAndPaint(canvas, CGRectMake(105, 5, 1, 1));
    EXPECT_EQ(child->paints, 2);
    child->setFrame(CGRectMake(200, 0, 10, 10));
    window->layoutAndPaint(canvas, CGRectMake(205, 105, 1, 1));
    EXPECT_EQ(child->paints, 3);
}

TEST(UIViewPainting, PaintsAViewShownOutsideItsSuperviewAfterAPaintWithoutIt) {
    const auto window = makeWindow();
    const auto row = add(window, CGRectMake(0, 0, 10, 10));
    const auto child = add<PaintedView>(row, CGRectMake(100, 0, 10, 10));
    child->setHidden(true);
    paintAll(*window);
    child->setHidden(false);
    RecordingCanvas canvas;
    window->layoutAndPaint(canvas, CGRectMake(105, 5, 1, 1));
    EXPECT_EQ(child->paints, 1);
}

TEST(UIViewPainting, FollowsAChangeUnderAHiddenViewThatWasPainted) {
    const auto window = makeWindow();
    const auto row = add(window, CGRectMake(0, 0, 50, 50));
    const auto child = add<PaintedView>(row, CGRectMake(0, 0, 50, 50));
    paintAll(*window);
    row->setHidden(true);
    paintAll(*window);
    child->setFrame(CGRectMake(200, 0, 50, 50));
    row->setHidden(false);
    RecordingCanvas canvas;
    window->layoutAndPaint(canvas, CGRectMake(210, 10, 1, 1));
    EXPECT_EQ(child->paints, 2);
}

TEST(UIViewPainting, StandsViewsRemovedByAPaintingView) {
    const auto window = makeWindow();
    const auto first = add<PaintedView>(window, CGRectMake(0, 0, 50, 50));
    std::weak_ptr<PaintedView> second = add<PaintedView>(window, CGRectMake(0, 0, 50, 50));
    first->onPaint = [&] {
        if (const auto view = second.lock()) view->removeFromSuperview();
        first->removeFromSuperview();
    };
    paintAll(*window);
    EXPECT_TRUE(second.expired());
    EXPECT_TRUE(window->subviews().empty());
}

TEST(UIViewPainting, LaysOutEachViewOnceBeforeItsFirstPaint) {
    const auto window = makeWindow();
    const auto row = add<LaidOutView>(window, CGRectMake(0, 0, 50, 50));
    const auto child = add<LaidOutView>(row, CGRectMake(0, 0, 50, 50));
    row->onLayout = [&] { EXPECT_EQ(row->paints, 0); };
    paintAll(*window);
    row->onLayout = nullptr;
    paintAll(*window);
    EXPECT_EQ(row->layouts, 1);
    EXPECT_EQ(child->layouts, 1);
}

TEST(UIViewPainting, LaysOutAgainWhenAskedOrResizedButNotWhenMoved) {
    const auto window = makeWindow();
    const auto row = add<LaidOutView>(window, CGRectMake(0, 0, 50, 50));
    const auto child = add<LaidOutView>(row, CGRectMake(0, 0, 50, 50));
    paintAll(*window);
    window->takeDamage();
    child->setNeedsLayout();
    EXPECT_FALSE(window->damage().empty());
    paintAll(*window);
    EXPECT_EQ(child->layouts, 2);
    EXPECT_EQ(row->layouts, 1);
    row->setFrame(CGRectMake(5, 5, 50, 50));
    paintAll(*window);
    EXPECT_EQ(row->layouts, 1);
    row->setFrame(CGRectMake(5, 5, 60, 50));
    paintAll(*window);
    EXPECT_EQ(row->layouts, 2);
    EXPECT_EQ(child->layouts, 2);
}

TEST(UIViewPainting, LaysOutASubviewThatItsSuperviewJustResized) {
    const auto window = makeWindow();
    const auto row = add<LaidOutView>(window, CGRectMake(0, 0, 50, 50));
    const auto child = add<LaidOutView>(row, CGRectMake(0, 0, 50, 50));
    paintAll(*window);
    row->onLayout = [&] { child->setFrame(CGRectMake(0, 0, 40, 40)); };
    row->setNeedsLayout();
    paintAll(*window);
    EXPECT_EQ(child->layouts, 2);
}

TEST(UIViewPainting, EndsALayoutThatAsksForItself) {
    const auto window = makeWindow();
    const auto row = add<LaidOutView>(window, CGRectMake(0, 0, 50, 50));
    row->onLayout = [&] { row->setNeedsLayout(); };
    paintAll(*window);
    EXPECT_EQ(row->layouts, 1);
    paintAll(*window);
    EXPECT_EQ(row->layouts, 2);
}

TEST(UIViewPainting, LaysOutASubtreeThatIsAddedLater) {
    const auto window = makeWindow();
    const auto row = std::make_shared<UIView>(CGRectMake(0, 0, 50, 50));
    const auto child = add<LaidOutView>(row, CGRectMake(0, 0, 50, 50));
    paintAll(*window);
    row->layoutIfNeeded();
    EXPECT_EQ(child->layouts, 1);
    child->setNeedsLayout();
    window->addSubview(row);
    paintAll(*window);
    EXPECT_EQ(child->layouts, 2);
}

TEST(UIViewPainting, StandsALayoutThatDestroysTheViewsSuperview) {
    const auto window = makeWindow();
    std::weak_ptr<UIView> row = add(window, CGRectMake(0, 0, 50, 50));
    const std::weak_ptr<LaidOutView> child = add<LaidOutView>(row.lock(), CGRectMake(0, 0, 5, 5));
    child.lock()->onLayout = [row] { row.lock()->removeFromSuperview(); };
    paintAll(*window);
    EXPECT_TRUE(row.expired());
    EXPECT_TRUE(child.expired());
}
