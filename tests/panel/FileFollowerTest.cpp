#include "platform/foundation/PreferencesDirectory.hpp"
#include "shells/common/FileFollower.hpp"
#include "shells/common/WidgetBundle.hpp"
#include "tests/support/MixerFiles.hpp"
#include "tests/support/VirtualClock.hpp"

#include <glib.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

using shell::FileFollower;
using News = FileFollower::News;

namespace {

// The kernel queues events before the call that made them returns, so nothing has to be waited for.
class FileFollowerTest : public testing::Test {
 protected:
    FileFollowerTest() {
        shell::installBackends();
        setPreferencesDirectory(files.folder().string());
        files.writeCategories({{"Ringtone", "Bell"}});
    }
    ~FileFollowerTest() override { setPreferencesDirectory(""); }

    void pass(double seconds) {
        while (g_main_context_iteration(nullptr, FALSE)) {
        }
        clock.advance(seconds);
        NSRunLoop::mainRunLoop().runDue();
    }
    /// What was told since the last call.
    std::vector<News> toldAfter(double seconds) {
        pass(seconds);
        return std::exchange(told, {});
    }

    static constexpr double settled = FileFollower::settlingSeconds + 0.001;
    const std::vector<News> nothing{};
    const std::vector<News> changed{News::Changed};
    const std::vector<News> unreadable{News::Unreadable};

    VirtualClock clock;
    test::MixerFiles files;
    std::vector<News> told;
    FileFollower follower{[this](News news) { told.push_back(news); }};
};

}  // namespace

TEST_F(FileFollowerTest, TellsOfAChangeOnceTheFileHasStayedTheSameForAMoment) {
    follower.begin();
    files.writeCategories({{"Ringtone", "Ring"}});
    EXPECT_EQ(toldAfter(FileFollower::settlingSeconds * 0.9), nothing);
    files.writeCategories({{"Ringtone", "Ringtone"}});
    EXPECT_EQ(toldAfter(FileFollower::settlingSeconds * 0.9), nothing);
    EXPECT_EQ(toldAfter(settled), changed);
    EXPECT_EQ(toldAfter(settled), nothing);
}

TEST_F(FileFollowerTest, TellsOfTheSettingsTooAlsoWhereThereWereNone) {
    follower.begin();
    files.writeSettings("<key>displayPercentage</key><false/>");
    EXPECT_EQ(toldAfter(settled), changed);
}

TEST_F(FileFollowerTest, SaysNothingWhereTheFilesSayTheSame) {
    follower.begin();
    files.writeCategories({{"Ringtone", "Other"}});
    files.writeCategories({{"Ringtone", "Bell"}});
    EXPECT_EQ(toldAfter(settled), nothing);
}

TEST_F(FileFollowerTest, SaysThatAFileCannotBeReadAndThatItIsMended) {
    follower.begin();
    test::MixerFiles::write(files.categoryFile(), "<plist><array><dict></array></plist>");
    EXPECT_EQ(toldAfter(settled), unreadable);
    files.writeCategories({{"Ringtone", "Bell"}});
    EXPECT_EQ(toldAfter(settled), changed) << "the notice goes";
    test::MixerFiles::write(files.settingsFile(), "<plist><array/></plist>");
    EXPECT_EQ(toldAfter(settled), unreadable) << "it is no dictionary";
}

TEST_F(FileFollowerTest, BelievesThatAFileIsGoneAfterAWhileAlone) {
    follower.begin();
    std::filesystem::remove(files.categoryFile());
    EXPECT_EQ(toldAfter(settled), nothing);
    files.writeCategories({{"Ringtone", "Bell"}});
    EXPECT_EQ(toldAfter(FileFollower::goneSeconds), nothing) << "an editor wrote it anew";
    std::filesystem::remove(files.categoryFile());
    EXPECT_EQ(toldAfter(settled), nothing);
    EXPECT_EQ(toldAfter(FileFollower::goneSeconds), changed);
}

TEST_F(FileFollowerTest, ComparesWithWhatTheRowsWereAssembledFrom) {
    follower.begin();
    files.writeCategories({{"Ringtone", "Ring"}});
    pass(0);
    follower.begin();  // Somebody else's reason, while the change settles.
    EXPECT_EQ(toldAfter(settled), changed);
    follower.begin();
    EXPECT_EQ(toldAfter(settled), nothing);
}

TEST_F(FileFollowerTest, SaysNothingOnceTheRowsAreNotShown) {
    follower.begin();
    files.writeCategories({{"Ringtone", "Ring"}});
    pass(0);
    follower.end();
    files.writeCategories({{"Ringtone", "Ringtone"}});
    EXPECT_EQ(toldAfter(settled), nothing);
    follower.begin();
    EXPECT_EQ(toldAfter(settled), nothing) << "the rows were assembled from this";
}
