#include "shells/headless/Events.hpp"

#include <gtest/gtest.h>

namespace headless {
namespace {

class RecentEventsTest : public testing::Test {
 protected:
    void add(const Json& entry) { recent.add({{"event", "e"}, {"entry", entry}}); }
    bool takes(std::string_view description) {
        return recent.take(*splitWords(description)).has_value();
    }
    RecentEvents recent;
};

TEST_F(RecentEventsTest, MatchTextsLetterByLetter) {
    add("Name");
    EXPECT_FALSE(takes("e name"));
    EXPECT_FALSE(takes("E Name"));
    EXPECT_TRUE(takes("e Name"));
}

TEST_F(RecentEventsTest, MatchNumbersWithinAServersSmallestStep) {
    for (const char* near : {"e 0.5", "e 0.50001", "e 0.49999", "e 5e-1"}) {
        add(0.5);
        EXPECT_TRUE(takes(near)) << near;
    }
    add(0.5);
    EXPECT_FALSE(takes("e 0.5001"));
    EXPECT_FALSE(takes("e half"));
}

TEST_F(RecentEventsTest, MatchWhatIsNeitherByItsName) {
    add(true);
    add(nullptr);
    EXPECT_FALSE(takes("e false"));
    EXPECT_FALSE(takes("e \"true\""));
    EXPECT_TRUE(takes("e true"));
    EXPECT_TRUE(takes("e null"));
}

TEST_F(RecentEventsTest, MatchADashWithAnythingUnlessItIsQuoted) {
    add("x");
    EXPECT_FALSE(takes("e \"-\""));
    EXPECT_TRUE(takes("e -"));
}

TEST_F(RecentEventsTest, ForgetTheOldestBeyondTheirMost) {
    add("first");
    for (std::size_t i = 0; i < RecentEvents::most; ++i)
        add("later");
    EXPECT_FALSE(takes("e first"));
    EXPECT_TRUE(takes("e later"));
}

TEST_F(RecentEventsTest, AreForgottenOnRequest) {
    add("x");
    recent.forget();
    EXPECT_FALSE(takes("e"));
}

}  // namespace
}  // namespace headless
