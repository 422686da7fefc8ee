#include "tests/support/HeadlessFixture.hpp"

namespace test {
namespace {

class ControllerCommands : public HeadlessFixture {
 protected:
    void SetUp() override { start({"--parent-width", "320"}); }
};

TEST_F(ControllerCommands, CreateMakesThePrincipalClassOrANamedOne) {
    expectOk("create");
    expectOk("release");
    expectOk("create TarnwickViewControllerNew");
    EXPECT_EQ(resultOf("call visibleCategoriesCount"), 5);
}

TEST_F(ControllerCommands, CreateRefusesAnUnknownClass) {
    EXPECT_EQ(send("create Nobody").error(), "there is no class Nobody");
    expectOk("create");
}

TEST_F(ControllerCommands, CreateKeepsTheControllerThatIsThere) {
    expectOk("create");
    const Reply reply = send("create");
    EXPECT_EQ(reply.error(), "there is a controller: release it first");
    EXPECT_TRUE(reply.events.empty());
}

TEST_F(ControllerCommands, CallAnswersTheResult) {
    expectOk("create");
    EXPECT_EQ(resultOf("call preferredViewSize").dump(), R"({"width":320,"height":270})");
    EXPECT_EQ(resultOf("call visibleCategoriesCount").dump(), "5");
    EXPECT_EQ(resultOf("call viewHeight").dump(), "270");
    EXPECT_EQ(resultOf("call view"), "UIView");
    EXPECT_EQ(resultOf("call bundle"), "NSBundle");
    EXPECT_TRUE(send("call hostDidDismiss").result().is_null());
}

TEST_F(ControllerCommands, CallRefusesWhatTheControllerDoesNotRespondTo) {
    expectOk("create");
    EXPECT_EQ(send("call dance").error(), "the controller does not respond to 'dance'");
    EXPECT_EQ(send("call \"\"").error(), "the controller does not respond to ''");
    EXPECT_FALSE(send("call view 1").isOk());
    EXPECT_FALSE(send("call preferredViewSize nil yes 1,2 \"a b\"").isOk());
}

TEST_F(ControllerCommands, CallAndReleaseNeedAController) {
    EXPECT_EQ(send("call view").error(), "there is no controller");
    EXPECT_EQ(send("release").error(), "there is no controller");
    expectOk("create");
    expectOk("release");
    EXPECT_EQ(send("release").error(), "there is no controller");
}

TEST_F(ControllerCommands, ReleaseTakesTheViewOffTheWindow) {
    expectOk("create");
    expectOk("call view");
    EXPECT_EQ(resultOf("tree").at("frame").dump(), "[0,0,320,270]");
    expectOk("release");
    const Json window = resultOf("tree");
    EXPECT_EQ(window.at("frame").dump(), "[0,0,0,0]");
    EXPECT_TRUE(window.at("subviews").empty());
}

TEST_F(ControllerCommands, ParentChangesTheWidthBeforeAndAfterCreation) {
    expectOk("parent 400.5");
    expectOk("create");
    EXPECT_EQ(resultOf("call preferredViewSize").at("width"), 400.5);
    expectOk("parent 100000");
    EXPECT_EQ(resultOf("call preferredViewSize").at("width"), 100000);
    expectOk("parent none");
    EXPECT_EQ(resultOf("call preferredViewSize").at("width"), 0);
    expectOk("parent 0");
    EXPECT_EQ(resultOf("call preferredViewSize").at("width"), 0);
    EXPECT_EQ(expectOk("release"), (Happened{"log TW: dealloc", hidden}));
}

TEST_F(ControllerCommands, HostKnowsTwoSelectors) {
    expectOk("host widget:didUpdatePreferredSize: no");
    expectOk("host invalidatePreferredViewSize no");
    EXPECT_EQ(send("host hostWillPresent no").error(),
              "neither the host nor its delegate knows 'hostWillPresent'");
    expectOk("create");
    expectOk("call view");
    EXPECT_EQ(expectOk("call hostWillPresent"),
              (Happened{"log TW: self.preferredViewSize: {320, 270}", visible}));
    expectOk("host invalidatePreferredViewSize yes");
    EXPECT_EQ(expectOk("call hostWillPresent").size(), 3U);
}

TEST_F(ControllerCommands, ModelIsTheAnswerFromThenOn) {
    expectOk("parent 800");
    expectOk("create");
    expectOk("model iPad4,1");
    expectOk("call view");
    EXPECT_EQ(resultOf("tree").at("frame").dump(), "[0,0,560,270]");
}

}  // namespace
}  // namespace test
