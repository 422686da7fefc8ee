#include "tests/locale/CommaLocale.hpp"
#include "tests/rigs/Waiting.hpp"
#include "tests/settings/program/SettingsProgram.hpp"

#include <tuple>

namespace test {
namespace {

constexpr unsigned roleSwitch = 7;
constexpr unsigned rolePageTab = 37;
constexpr unsigned roleScrollPane = 49;

// Points. Places are told from the window's frame on, or from what is within it.
constexpr CGFloat frame = 8;

/// What a user's desktop asks for.
struct Appearance {
    const char* name;
    Environment environment;
    CGFloat width;  ///< Of the window, points.
};

const Appearance appearances[] = {
    {"light", {}, 640},
    {"dark", {{"ADW_DEBUG_COLOR_SCHEME", "prefer-dark"}}, 640},
    {"narrow", {}, 360},
    {"arabic", {{"LC_ALL", "ar_EG.UTF-8"}, {"LOCPATH", TARNWICK_TEST_LOCALES}}, 640},
};

/// Each page in each of them.
class SettingsAppearance : public SettingsProgram,
                           public testing::WithParamInterface<std::tuple<const char*, Appearance>> {
 protected:
    void open(const char* page, const Appearance& appearance) {
        start({"--page", page}, appearance.environment);
        constexpr CGFloat height = 800;
        resize({appearance.width, height});
        rigs::runFor(0.5);  // Until nothing moves any more.
        screen.picture().keep(std::string("settings-") + page + "-" + appearance.name);
    }
};

INSTANTIATE_TEST_SUITE_P(Of, SettingsAppearance,
                         testing::Combine(testing::Values("rows", "look", "behavior"),
                                          testing::ValuesIn(appearances)),
                         [](const auto& made) {
                             return std::string(std::get<0>(made.param)) + "_" +
                                    std::get<1>(made.param).name;
                         });

TEST_P(SettingsAppearance, FitsIntoTheWindowWithANameForEachControl) {
    const auto& [page, appearance] = GetParam();
    const bool isArabic = appearance.environment.contains("LC_ALL");
    if (isArabic && !CommaLocale().isActive())
        GTEST_SKIP() << "no locales can be made on this system";
    files.writeCategories({{"Ringtone", "Bell"}, {"Audio/Video", "Music"}});
    open(page, appearance);
    int controls = 0;
    for (const Object& each : shown()) {
        if (!reader.hasState(each, AtSpiClient::stateFocusable)) continue;
        ++controls;
        const std::string name = reader.name(each);
        EXPECT_TRUE(name != "" || reader.role(each) == roleScrollPane) << reader.role(each);
        // Those of the pages are told twice, also where the window's head has no room for them, and
        // a scrolled area has shadows beyond the window.
        if (reader.role(each) == rolePageTab || reader.role(each) == roleScrollPane) continue;
        const CGRect place = reader.extents(each);
        EXPECT_GE(place.origin.x, -frame) << name;
        EXPECT_LE(CGRectGetMaxX(place), size().width + frame) << name;
        if (reader.role(each) == roleSwitch && page == std::string("rows")) {
            EXPECT_EQ(CGRectGetMidX(place) < size().width / 2, isArabic) << "it ends the row";
        }
    }
    EXPECT_GT(controls, 5);
}

}  // namespace
}  // namespace test
