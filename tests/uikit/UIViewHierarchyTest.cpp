#include "tests/uikit/TestViews.hpp"

#include <ctime>

namespace {
class MovedView : public UIView {
 public:
    using UIView::UIView;
    int moves = 0;
    std::function<void()> onMove;

 protected:
    void didMoveToWindow() override {
        ++moves;
        if (onMove) onMove();
    }
};

using Views = std::vector<std::shared_ptr<UIView>>;
}  // namespace

TEST(UIViewHierarchy, KeepsSubviewsBackToFront) {
    const auto parent = std::make_shared<UIView>();
    const auto a = add(parent, {});
    const auto b = add(parent, {});
    EXPECT_EQ(parent->subviews(), (Views{a, b}));
    EXPECT_EQ(a->superview(), parent);
    parent->addSubview(a);
    EXPECT_EQ(parent->subviews(), (Views{b, a}));
    EXPECT_EQ(parent->subviews().size(), 2U);
}

TEST(UIViewHierarchy, TakesAViewFromItsFormerSuperview) {
    const auto first = std::make_shared<UIView>();
    const auto second = std::make_shared<UIView>();
    const auto view = add(first, {});
    second->addSubview(view);
    EXPECT_TRUE(first->subviews().empty());
    EXPECT_EQ(view->superview(), second);
}

TEST(UIViewHierarchy, OwnsItsSubviewsAndIsNotOwnedByThem) {
    auto parent = std::make_shared<UIView>();
    const auto kept = add(parent, {});
    const std::weak_ptr<UIView> dropped = add(parent, {});
    const std::weak_ptr<UIView> weakParent = parent;
    parent.reset();
    EXPECT_TRUE(weakParent.expired());
    EXPECT_TRUE(dropped.expired());
    EXPECT_EQ(kept->superview(), nullptr);
}

TEST(UIViewHierarchy, RefusesNothingItselfItsSuperviewsAndWindows) {
    const auto top = std::make_shared<UIView>();
    const auto middle = add(top, {});
    const auto bottom = add(middle, {});
    bottom->addSubview(nullptr);
    bottom->addSubview(bottom);
    bottom->addSubview(middle);
    bottom->addSubview(top);
    bottom->addSubview(makeWindow());
    EXPECT_TRUE(bottom->subviews().empty());
    EXPECT_EQ(top->superview(), nullptr);
    EXPECT_EQ(middle->superview(), top);
}

TEST(UIViewHierarchy, RefusesACycleInADeepTree) {
    const auto bottom = std::make_shared<UIView>();
    bottom->setTag(7);
    auto top = bottom;
    for (int depth = 0; depth < 10000; ++depth) {
        const auto above = std::make_shared<UIView>();
        above->setTag(1);
        above->addSubview(top);
        top = above;
    }
    bottom->addSubview(top);
    EXPECT_EQ(top->superview(), nullptr);
    EXPECT_EQ(top->viewWithTag(7), bottom);
    while (top != bottom) {  // From the top: each is destroyed by itself.
        const auto below = top->subviews().at(0);
        below->removeFromSuperview();
        top = below;
    }
}

TEST(UIViewHierarchy, AddsAViewNamedByTheSuperviewsOwnList) {
    const auto first = std::make_shared<UIView>();
    add(first, {});
    const auto second = std::make_shared<UIView>();
    const auto views = first->subviews();
    second->addSubview(views.front());
    EXPECT_EQ(second->subviews(), views);
}

TEST(UIViewHierarchy, CanBeRemovedByItsLastOwner) {
    const auto parent = std::make_shared<UIView>();
    UIView* const view = add(parent, {}).get();
    view->removeFromSuperview();
    EXPECT_TRUE(parent->subviews().empty());
}

TEST(UIViewHierarchy, IgnoresARemovalFromNowhere) {
    const auto view = std::make_shared<UIView>();
    view->removeFromSuperview();
    EXPECT_EQ(view->superview(), nullptr);
}

TEST(UIViewHierarchy, KnowsTheWindowAtItsRoot) {
    auto window = makeWindow();
    const auto row = add(window, {});
    const auto label = add(row, {});
    EXPECT_EQ(label->window(), window);
    EXPECT_EQ(window->window(), window);
    row->removeFromSuperview();
    EXPECT_EQ(label->window(), nullptr);
    window->addSubview(row);
    window.reset();
    EXPECT_EQ(label->window(), nullptr);
    EXPECT_EQ(row->superview(), nullptr);
}

TEST(UIViewHierarchy, TellsAWholeSubtreeThatItsWindowChanged) {
    const auto window = makeWindow();
    const auto other = makeWindow();
    const auto row = std::make_shared<MovedView>();
    const auto label = add<MovedView>(row, {});
    EXPECT_EQ(label->moves, 0);
    window->addSubview(row);
    EXPECT_EQ(row->moves, 1);
    EXPECT_EQ(label->moves, 1);
    window->addSubview(row);
    EXPECT_EQ(label->moves, 1);
    other->addSubview(row);
    EXPECT_EQ(label->moves, 2);
    row->removeFromSuperview();
    EXPECT_EQ(label->moves, 3);
}

TEST(UIViewHierarchy, MayLoseASubviewWhileTheSubtreeIsTold) {
    const auto window = makeWindow();
    const auto row = std::make_shared<MovedView>();
    const std::weak_ptr<MovedView> label = add<MovedView>(row, {});
    row->onMove = [label] {
        if (const auto view = label.lock()) view->removeFromSuperview();
    };
    window->addSubview(row);
    EXPECT_TRUE(label.expired());
}

TEST(UIViewHierarchy, TellsViewsThatOutliveTheirWindow) {
    auto window = makeWindow();
    const auto view = add<MovedView>(window, {});
    window.reset();
    EXPECT_EQ(view->moves, 2);
    EXPECT_EQ(view->window(), nullptr);
}

TEST(ViewWithTag, FindsTheReceiverBeforeItsSubviews) {
    const auto top = std::make_shared<UIView>();
    const auto child = add(top, {});
    EXPECT_EQ(top->viewWithTag(0), top);
    top->setTag(5);
    child->setTag(5);
    EXPECT_EQ(top->viewWithTag(5), top);
    EXPECT_EQ(child->viewWithTag(5), child);
    EXPECT_EQ(top->viewWithTag(0), nullptr);
}

TEST(ViewWithTag, FindsTheFirstInDocumentOrder) {
    const auto top = std::make_shared<UIView>();
    const auto first = add(top, {});
    const auto second = add(top, {});
    const auto nested = add(first, {});
    second->setTag(9);
    EXPECT_EQ(top->viewWithTag(9), second);
    nested->setTag(9);
    EXPECT_EQ(top->viewWithTag(9), nested);
    EXPECT_EQ(second->viewWithTag(9), second);
    top->addSubview(first);
    EXPECT_EQ(top->viewWithTag(9), second);
}

TEST(ViewWithTag, FindsTheFirstOfManyWhateverTheirNumber) {
    for (const int count : {1, 3, 4, 5, 6, 40}) {
        const auto top = std::make_shared<UIView>();
        std::vector<std::shared_ptr<UIView>> views;
        for (int i = 0; i < count; ++i) {
            views.push_back(add(top, {}));
            views.back()->setTag(1 + i / 2);  // Each tag twice.
        }
        for (int i = 0; i < count; ++i)
            EXPECT_EQ(top->viewWithTag(1 + i / 2), views[static_cast<std::size_t>(i - i % 2)]);
        EXPECT_EQ(top->viewWithTag(0), top);
        EXPECT_EQ(top->viewWithTag(100), nullptr);
        EXPECT_EQ(top->viewWithTag(-1), nullptr);
        const auto nested = add(views.front(), {});
        nested->setTag(100);
        EXPECT_EQ(top->viewWithTag(100), nested) << count;
    }
}

TEST(ViewWithTag, FollowsEveryChangeOfTheTree) {
    const auto top = std::make_shared<UIView>();
    const auto row = add(top, {});
    EXPECT_EQ(top->viewWithTag(1000), nullptr);
    const auto label = std::make_shared<UIView>();
    label->setTag(1000);
    row->addSubview(label);
    EXPECT_EQ(top->viewWithTag(1000), label);
    EXPECT_EQ(row->viewWithTag(1000), label);
    label->setTag(-1);
    EXPECT_EQ(top->viewWithTag(1000), nullptr);
    EXPECT_EQ(top->viewWithTag(-1), label);
    label->removeFromSuperview();
    EXPECT_EQ(top->viewWithTag(-1), nullptr);
    EXPECT_EQ(row->viewWithTag(-1), nullptr);
    row->addSubview(label);
    EXPECT_EQ(top->viewWithTag(-1), label);
    row->removeFromSuperview();
    EXPECT_EQ(top->viewWithTag(-1), nullptr);
    EXPECT_EQ(row->viewWithTag(-1), label);
}

TEST(ViewWithTag, ForgetsADestroyedView) {
    const auto top = std::make_shared<UIView>();
    std::weak_ptr<UIView> weak;
    {
        const auto row = add(top, {});
        add(row, {})->setTag(3);
        weak = row;
        EXPECT_TRUE(top->viewWithTag(3));
    }
    weak.lock()->removeFromSuperview();
    EXPECT_EQ(top->viewWithTag(3), nullptr);
}

TEST(ViewWithTag, FindsOneViewByHiddenAndExtremeTags) {
    const auto top = std::make_shared<UIView>();
    const auto view = add(top, {});
    view->setHidden(true);
    view->setTag(INTPTR_MIN);
    EXPECT_EQ(top->viewWithTag(INTPTR_MIN), view);
    EXPECT_EQ(top->viewWithTag(INTPTR_MAX), nullptr);
}

namespace {
/// The processor's time, which a busy machine does not stretch.
double secondsOf(const std::function<void()>& work) {
    const std::clock_t start = std::clock();
    work();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}
}  // namespace

// Looking up all labels and sliders of a tree costs about as much as going through it once; were
// each look-up a search, it would cost ten thousand times as much.
TEST(ViewWithTag, TakesLinearTimeForAllViewsOfATree) {
    constexpr int rows = 10000;
    const auto top = std::make_shared<UIView>();
    top->setTag(1);
    for (int row = 0; row < rows; ++row) {
        const auto view = add(top, {});
        add(view, {})->setTag(100000 + row);
        add(view, {})->setTag(200000 + row);
    }
    const auto last = top->viewWithTag(100000 + rows - 1);
    const double search = secondsOf([&] {
        last->setTag(5);
        EXPECT_EQ(top->viewWithTag(5), last);
        last->setTag(100000 + rows - 1);
    });
    const double lookUps = secondsOf([&] {
        for (int row = 0; row < rows; ++row) {
            EXPECT_TRUE(top->viewWithTag(100000 + row));
            EXPECT_TRUE(top->viewWithTag(200000 + row));
        }
    });
    EXPECT_LT(lookUps, 100 * search);
}
