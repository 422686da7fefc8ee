#include "tests/support/HeadlessFixture.hpp"

namespace test {
namespace {

/// What stands in the host's window after a step.
enum class Shown { Nothing, EmptyMixer, FullMixer };

struct Step {
    std::string command;
    Happened happened;
    Shown shown;
};

struct Story {
    std::string name;
    std::vector<Step> steps;

    friend void PrintTo(const Story& tested, std::ostream* out) { *out << tested.name; }
};

const Happened nothing;
const Happened made = {"log TW: old loadView", "post org.tarnwick.mixer.isvisible"};
const Happened disappeared = {"post org.tarnwick.mixer.ishidden"};

const Step creation = {"create TarnwickViewController", nothing, Shown::Nothing};
const Step placeholder = {"call loadPlaceholderView", nothing, Shown::Nothing};
const Step viewing = {"call view", made, Shown::EmptyMixer};
const Step filling = {"call loadFullView", nothing, Shown::FullMixer};
const Step willAppear = {"call viewWillAppear", nothing, Shown::FullMixer};
const Step didAppear = {"call viewDidAppear", nothing, Shown::FullMixer};
const Step willDisappear = {"call viewWillDisappear", nothing, Shown::EmptyMixer};
const Step didDisappear = {"call viewDidDisappear", disappeared, Shown::EmptyMixer};
const Step unloading = {"call unloadView", nothing, Shown::Nothing};
const Step end = {"release", nothing, Shown::Nothing};

const std::vector<Story> stories = {
    {"CreatedThenReleasedSaysNothing", {creation, end}},
    {"APlaceholderIsNoView", {creation, placeholder, placeholder, viewing}},
    {"AnAppearanceFromTheFirstCallToTheLast",
     {creation, placeholder, viewing, filling, willAppear, didAppear, willDisappear, didDisappear,
      unloading, end}},
    {"OnlyTheViewsCreationAnnouncesIt",
     {creation, viewing, filling, willAppear, didAppear, willDisappear, didDisappear, filling,
      willAppear, didAppear, willDisappear, didDisappear}},
    {"TheViewIsMadeOnce", {creation, viewing, {"call view", nothing, Shown::EmptyMixer}, filling}},
    {"AnUnloadedViewIsMadeAnew", {creation, viewing, filling, unloading, viewing, filling}},
    {"ReleasedWhileShownSaysNothing", {creation, viewing, filling, end}},
    {"FilledBeforeTheHostAsksForTheView",
     {creation,
      {"call loadFullView", made, Shown::Nothing},
      {"call view", nothing, Shown::FullMixer}}},
    {"UnloadingWithoutAViewMakesOneFirst",
     {creation,
      {"call unloadView", made, Shown::Nothing},
      {"call unloadView", made, Shown::Nothing},
      viewing}},
    {"DisappearingWithoutAViewDoesNothing",
     {creation,
      {"call viewWillDisappear", nothing, Shown::Nothing},
      {"call viewDidDisappear", disappeared, Shown::Nothing},
      {"call viewDidDisappear", disappeared, Shown::Nothing},
      viewing}},
    {"AnUnloadedViewIsStillEmptiedWhenItDisappears",
     {creation, viewing, filling, unloading, {"call viewWillDisappear", nothing, Shown::Nothing}}},
    {"LoadedAgainItReplacesTheView",
     {creation,
      viewing,
      filling,
      {"call loadView", made, Shown::FullMixer},
      {"call view", nothing, Shown::EmptyMixer}}},
    {"SizesSayNothing",
     {creation,
      {"call viewHeight", nothing, Shown::Nothing},
      {"call preferredViewSize", nothing, Shown::Nothing},
      {"call visibleCategoriesCount", nothing, Shown::Nothing},
      viewing}},
};

class LegacyControllerStory : public HeadlessFixture, public testing::WithParamInterface<Story> {
 protected:
    void SetUp() override {
        files.writeShownCategories(5);
        start();
    }
    Shown shown() {
        const Json views = resultOf("tree").at("subviews");
        if (views.empty()) return Shown::Nothing;
        EXPECT_EQ(views.size(), 1U);
        EXPECT_EQ(views.at(0).at("class"), "TarnwickView") << "there is no container";
        const std::size_t rows = views.at(0).at("subviews").size();
        if (rows == 0) return Shown::EmptyMixer;
        EXPECT_EQ(rows, 5U) << "not the rows of one assembly";
        return Shown::FullMixer;
    }
};

TEST_P(LegacyControllerStory, AnnouncesWhatItShould) {
    int number = 0;
    for (const Step& step : GetParam().steps) {
        SCOPED_TRACE(std::to_string(++number) + ": " + step.command);
        EXPECT_EQ(expectOk(step.command), step.happened);
        EXPECT_EQ(shown(), step.shown);
    }
}

INSTANTIATE_TEST_SUITE_P(Stories, LegacyControllerStory, testing::ValuesIn(stories),
                         [](const auto& tested) { return tested.param.name; });

class LegacyController : public HeadlessFixture {
 protected:
    void create(const std::string& model = "iPhone4,1") {
        start({"--model", model});
        expectOk("create TarnwickViewController");
    }
    void expectSize(double width, double height) {
        EXPECT_EQ(resultOf("call preferredViewSize"), Json({{"width", width}, {"height", height}}));
        EXPECT_EQ(resultOf("call viewHeight"), height);
        expectOk("call view");
        EXPECT_EQ(resultOf("tree").at("subviews").at(0).at("frame"),
                  Json::array({0, 0, width, height}));
    }
};

TEST_F(LegacyController, IsAsTallAsTheInitialListWithoutACategoryFile) {
    create();
    expectSize(320, 250);
}

TEST_F(LegacyController, IsWiderOnAnIpad) {
    create("iPad2,1");
    expectSize(480, 250);
}

TEST_F(LegacyController, IsNoWiderOnAnIpod) {
    create("iPod4,1");
    expectSize(320, 250);
}

TEST_F(LegacyController, IsNoWiderForAModelThatOnlyContainsTheName) {
    create("My iPad");
    expectSize(320, 250);
}

TEST_F(LegacyController, HasNoMarginAroundASingleRow) {
    files.writeShownCategories(1);
    create();
    expectSize(320, 50);
}

TEST_F(LegacyController, HasNoHeightWhenEveryCategoryIsHidden) {
    files.writeCategories({{"Ringtone", "Ringtone", Row::Hidden}});
    create();
    expectSize(320, 0);
}

TEST_F(LegacyController, CountsAnUnreadableFileAsTheInitialList) {
    MixerFiles::write(files.categoryFile(), "garbage");
    create();
    expectSize(320, 250);
}

TEST_F(LegacyController, ReadsTheCategoryFileForEachQuestion) {
    create();
    files.writeShownCategories(2);
    EXPECT_EQ(resultOf("call viewHeight"), 100);
    files.writeShownCategories(7);
    EXPECT_EQ(resultOf("call viewHeight"), 350);
    EXPECT_EQ(resultOf("call visibleCategoriesCount"), 7);
}

TEST_F(LegacyController, FindsOutTheDeviceAtEachCount) {
    create();
    EXPECT_EQ(resultOf("call preferredViewSize").at("width"), 320);
    expectOk("model iPad2,1");
    EXPECT_EQ(resultOf("call preferredViewSize").at("width"), 480);
    expectOk("model iPhone4,1");
    EXPECT_EQ(resultOf("call preferredViewSize").at("width"), 320);
}

TEST_F(LegacyController, NeverWritesTheCategoryFileBeforeTheFullView) {
    create();
    expectOk("call view");
    expectOk("call viewHeight");
    EXPECT_FALSE(std::filesystem::exists(files.categoryFile()));
    expectOk("call loadFullView");
    EXPECT_TRUE(std::filesystem::exists(files.categoryFile()));
}

TEST_F(LegacyController, RespondsToItsOwnMessagesAlone) {
    create();
    for (const char* selector :
         {"clearShapshotImage", "launchURL",
          "willAnimateRotationToInterfaceOrientation:", "willRotateToInterfaceOrientation:",
          "didRotateFromInterfaceOrientation:", "hostWillPresent", "destroyMixer"}) {
        const Reply reply = send(std::string("call ") + selector);
        EXPECT_EQ(reply.error(),
                  std::string("the controller does not respond to '") + selector + "'");
    }
    EXPECT_EQ(resultOf("call bundle"), "NSBundle");
    expectOk("call setBundle: nil");
    EXPECT_EQ(resultOf("call bundle"), nullptr);
}

TEST_F(LegacyController, RowsFollowTheVolumeOnlyWhileTheyAreShown) {
    create();
    expectOk("call view");
    expectOk("call loadFullView");
    expectOk("volume Ringtone 0.25");
    EXPECT_EQ(viewWithTag(2000).at("value"), 25);
    expectOk("call viewWillDisappear");
    EXPECT_EQ(expectOk("volume Ringtone 0.75"), Happened({"volume Ringtone 0.75"}));
    EXPECT_TRUE(viewWithTag(2000).is_null());
    expectOk("call loadFullView");
    EXPECT_EQ(viewWithTag(2000).at("value"), 75);
}

}  // namespace
}  // namespace test
