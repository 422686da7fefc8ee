#include "tests/headless/WidgetEvents.hpp"
#include "tests/support/HeadlessFixture.hpp"

namespace test {
namespace {

struct HandShake {
    std::string name;
    std::string delegateResponds;
    std::string hostResponds;
    Happened happened;

    friend void PrintTo(const HandShake& tested, std::ostream* out) { *out << tested.name; }
};

class WidgetControllerHost : public HeadlessFixture,
                             public testing::WithParamInterface<HandShake> {};

TEST_P(WidgetControllerHost, IsAskedBeforeItIsTold) {
    start({"--parent-width", "320"});
    expectOk("host widget:didUpdatePreferredSize: " + GetParam().delegateResponds);
    expectOk("host invalidatePreferredViewSize " + GetParam().hostResponds);
    expectOk("create");
    expectOk("call view");
    EXPECT_EQ(expectOk("call hostWillPresent"), GetParam().happened);
}

INSTANTIATE_TEST_SUITE_P(
    Responding, WidgetControllerHost,
    testing::Values(HandShake{"Both", "yes", "yes", {sizeTold, sizeLogged, sizeInvalid, shown}},
                    HandShake{"DelegateAlone", "yes", "no", {sizeTold, sizeLogged, shown}},
                    HandShake{"HostAlone", "no", "yes", {sizeLogged, sizeInvalid, shown}},
                    HandShake{"Neither", "no", "no", {sizeLogged, shown}}),
    [](const auto& tested) { return tested.param.name; });

}  // namespace
}  // namespace test
