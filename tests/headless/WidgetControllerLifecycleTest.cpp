#include "tests/support/HeadlessFixture.hpp"

namespace test {
namespace {

enum class Container { None, Empty, WithMixer };

/// A command, what it makes happen, and what stands in the window afterwards.
struct Step {
    std::string command;
    Happened happened;
    Container container;
};

struct Story {
    std::string name;
    std::vector<Step> steps;

    friend void PrintTo(const Story& tested, std::ostream* out) { *out << tested.name; }
};

// What the controllers make happen with the initial list in 320 points.
const std::string shown = "post org.tarnwick.mixer.isvisible";
const std::string gone = "post org.tarnwick.mixer.ishidden";
const std::string sizeTold = "host widget:didUpdatePreferredSize: 320 x 270";
const std::string sizeLogged = "log TW: self.preferredViewSize: {320, 270}";
const std::string sizeInvalid = "host invalidatePreferredViewSize";

const Happened nothing;
const Happened presented = {sizeTold, sizeLogged, sizeInvalid, shown};
const Happened deallocated = {"log TW: dealloc", gone};

const Step creation = {"create", nothing, Container::None};
const Step loading = {"call view", {shown}, Container::WithMixer};
const Step presentation = {"call hostWillPresent", presented, Container::WithMixer};
const Step dismissal = {"call hostDidDismiss", {gone}, Container::Empty};
const Step unloading = {"call unloadView", {"log TW: unloadView", gone}, Container::Empty};
const Step end = {"release", deallocated, Container::None};

const std::vector<Story> stories = {
    {"CreatedThenReleased", {creation, end}},
    {"TheFirstAppearanceAnnouncesItselfTwice", {creation, loading, presentation}},
    {"TheViewIsLoadedOnce",
     {creation, loading, {"call view", nothing, Container::WithMixer}, presentation}},
    {"PresentedTwiceWithoutADismissal", {creation, loading, presentation, presentation, end}},
    {"ReleasedWhileShown", {creation, loading, presentation, end}},
    {"ReleasedBeforeItsPresentation", {creation, loading, end}},
    {"ADismissedOneThatIsReleasedHidesTwice", {creation, loading, presentation, dismissal, end}},
    {"PresentedAgainAfterItsDismissal",
     {creation, loading, presentation, dismissal, presentation, dismissal, presentation, end}},
    {"DismissedTwice", {creation, loading, presentation, dismissal, dismissal, presentation}},
    {"UnloadedAndPresentedAgain", {creation, loading, presentation, unloading, presentation}},
    {"UnloadedTwice", {creation, loading, unloading, unloading, end}},
    {"UnloadedAfterItsDismissal", {creation, loading, presentation, dismissal, unloading}},
    {"TheViewOfADismissedOneIsItsContainer",
     {creation, loading, dismissal, {"call view", nothing, Container::Empty}, presentation}},
    {"DismissedBeforeItHasAView",
     {creation, {"call hostDidDismiss", {gone}, Container::None}, loading}},
    {"UnloadedBeforeItHasAView",
     {creation, {"call unloadView", {"log TW: unloadView", gone}, Container::None}, loading}},
    {"MixerDestroyedWithoutOne",
     {creation,
      {"call destroyMixer", {gone}, Container::None},
      {"call destroyMixer", {gone}, Container::None},
      loading,
      {"call destroyMixer", {gone}, Container::Empty},
      {"call destroyMixer", {gone}, Container::Empty}}},
    {"PresentedBeforeTheHostAsksForTheView",
     {creation,
      {"call hostWillPresent",
       {sizeTold, sizeLogged, sizeInvalid, shown, shown},
       Container::WithMixer},
      dismissal,
      end}},
    {"AskedForItsSizeBeforeAnythingElse",
     {creation,
      {"call preferredViewSize", nothing, Container::None},
      {"call visibleCategoriesCount", nothing, Container::None},
      {"call viewHeight", {"log TW: viewHeight"}, Container::None},
      loading}},
    {"CreatedAgainAfterItsRelease", {creation, loading, end, creation, loading, presentation, end}},
};

class WidgetControllerLifecycle : public HeadlessFixture,
                                  public testing::WithParamInterface<Story> {
 protected:
    void SetUp() override {
        files.writeShownCategories(5);
        start({"--parent-width", "320"});
    }
    Container container() {
        const Json window = resultOf("tree");
        const Json& views = window.at("subviews");
        if (views.empty()) return Container::None;
        EXPECT_EQ(views.size(), 1U);
        const Json& subviews = views.at(0).at("subviews");
        if (subviews.empty()) return Container::Empty;
        EXPECT_EQ(subviews.size(), 1U) << "more than one mixer";
        EXPECT_EQ(subviews.at(0).at("class"), "TarnwickView");
        EXPECT_EQ(subviews.at(0).at("subviews").size(), 5U) << "not the rows of one assembly";
        return Container::WithMixer;
    }
};

TEST_P(WidgetControllerLifecycle, AnnouncesEveryTransitionAndBuildsOneMixer) {
    int number = 0;
    for (const Step& step : GetParam().steps) {
        SCOPED_TRACE(std::to_string(++number) + ": " + step.command);
        EXPECT_EQ(expectOk(step.command), step.happened);
        EXPECT_EQ(container(), step.container);
    }
}

INSTANTIATE_TEST_SUITE_P(Stories, WidgetControllerLifecycle, testing::ValuesIn(stories),
                         [](const auto& tested) { return tested.param.name; });

}  // namespace
}  // namespace test
