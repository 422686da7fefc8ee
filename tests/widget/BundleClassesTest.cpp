#include "platform/foundation/NSBundle.hpp"
#include "platform/foundation/NSClassRegistry.hpp"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

std::vector<std::string> classesOfTheBundle() {
    std::vector<std::string> names;
    for (const std::string& name : NSClassRegistry::names()) {
        const auto bundle = NSBundle::bundleForClass(NSClassFromString(name));
        if (bundle && bundle->bundlePath() == TARNWICK_BUNDLE_DIR) names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

TEST(BundleClasses, AreThoseOfTheHostsThatTheProcessorHas) {
    std::vector<std::string> expected;
    if constexpr (sizeof(void*) == 4)
        expected = {"TarnwickView", "TarnwickViewController", "TarnwickViewControllerNew",
                    "Tarnwick__GSEvent"};
    else
        expected = {"TarnwickView", "TarnwickViewControllerNew"};
    EXPECT_EQ(classesOfTheBundle(), expected);
}

}  // namespace
