#include "platform/foundation/NSClassRegistry.hpp"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

struct Widget : NSObject {
    bool init() { return true; }
    std::string_view className() const override { return "Widget"; }
};
struct Refusing : NSObject {
    bool init() { return false; }
};

TEST(ClassRegistry, FindsAClassForAsLongAsItIsRegistered) {
    EXPECT_EQ(NSClassFromString("Widget"), nullptr);
    {
        const ClassRegistration<Widget> registration("Widget");
        const Class* found = NSClassFromString("Widget");
        ASSERT_NE(found, nullptr);
        EXPECT_EQ(found->name, "Widget");
        EXPECT_EQ(found->create()->className(), "Widget");
    }
    EXPECT_EQ(NSClassFromString("Widget"), nullptr);
}

TEST(ClassRegistry, AnswersNothingFromAClassThatDoesNotInitialise) {
    const ClassRegistration<Refusing> registration("Refusing");
    EXPECT_EQ(NSClassFromString("Refusing")->create(), nullptr);
}

TEST(ClassRegistry, LetsTheFirstRegistrationOfANameWin) {
    const ClassRegistration<Widget> first("Name");
    {
        const ClassRegistration<Refusing> second("Name");
        EXPECT_NE(NSClassFromString("Name")->create(), nullptr);
    }
    EXPECT_NE(NSClassFromString("Name"), nullptr) << "the end of the second is not the first's";
}

TEST(ClassRegistry, KeepsAnAnswerValidWhileOthersComeAndGo) {
    const ClassRegistration<Widget> widget("Widget");
    const Class* found = NSClassFromString("Widget");
    for (int i = 0; i < 1000; ++i) {
        NSClassRegistry::registerClass({"Other" + std::to_string(i), nullptr, nullptr});
    }
    EXPECT_EQ(NSClassFromString("Widget"), found);
    EXPECT_EQ(found->name, "Widget");
    for (int i = 0; i < 1000; ++i) {
        NSClassRegistry::unregisterClass("Other" + std::to_string(i), nullptr);
    }
    EXPECT_EQ(NSClassFromString("Other0"), nullptr);
}

TEST(ClassRegistry, ListsEachNameOnce) {
    const ClassRegistration<Widget> first("Name");
    const ClassRegistration<Refusing> second("Name");
    const auto names = NSClassRegistry::names();
    EXPECT_EQ(std::ranges::count(names, "Name"), 1);
}

TEST(ClassRegistry, KnowsNoEmptyNameAndMindsTheCase) {
    const ClassRegistration<Widget> registration("Widget");
    EXPECT_EQ(NSClassFromString(""), nullptr);
    EXPECT_EQ(NSClassFromString("widget"), nullptr);
}

}  // namespace
