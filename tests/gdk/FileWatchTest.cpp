#include "backends/glib/FileWatch.hpp"

#include <glib.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

using glib::FileWatch;

namespace fs = std::filesystem;

// The kernel queues events before the call that made them returns, so nothing has to be waited
// for.
class FileWatchTest : public testing::Test {
 protected:
    FileWatchTest() {
        std::string pattern = (fs::temp_directory_path() / "watch-XXXXXX").string();
        folder = mkdtemp(pattern.data());
    }
    ~FileWatchTest() override { fs::remove_all(folder); }

    void watch(const fs::path& file, FileWatch::Tell tell = FileWatch::Tell::Appearance) {
        watching = std::make_unique<FileWatch>(
            file, [this] { ++calls; }, tell);
    }
    static void write(const fs::path& file) { std::ofstream(file) << "x"; }
    int callsAfterTurns() {
        while (g_main_context_iteration(nullptr, FALSE)) {
        }
        return calls;
    }

    fs::path folder;
    int calls = 0;
    std::unique_ptr<FileWatch> watching;
};

TEST_F(FileWatchTest, TellsAFileThatComes) {
    watch(folder / "native");
    EXPECT_EQ(callsAfterTurns(), 0);
    write(folder / "native");
    EXPECT_EQ(calls, 0) << "from the main context";
    EXPECT_EQ(callsAfterTurns(), 1);
}

TEST_F(FileWatchTest, TellsAFileThatIsMadeAnewOrMovedThere) {
    write(folder / "native");
    watch(folder / "native");
    EXPECT_EQ(callsAfterTurns(), 0);
    fs::remove(folder / "native");
    EXPECT_EQ(callsAfterTurns(), 0);
    write(folder / "native");
    EXPECT_EQ(callsAfterTurns(), 1);
    write(folder / "other");
    fs::rename(folder / "other", folder / "native");
    EXPECT_EQ(callsAfterTurns(), 2);
}

TEST_F(FileWatchTest, IgnoresWhatElseHappensInTheFolder) {
    watch(folder / "native");
    write(folder / "native2");
    write(folder / "other");
    fs::remove(folder / "other");
    EXPECT_EQ(callsAfterTurns(), 0);
}

TEST_F(FileWatchTest, TellsEachChangeWhereThatIsAsked) {
    write(folder / "file");
    watch(folder / "file", FileWatch::Tell::EachChange);
    write(folder / "file");
    EXPECT_EQ(callsAfterTurns(), 1) << "written in place";
    fs::rename(folder / "file", folder / "other");
    EXPECT_EQ(callsAfterTurns(), 2);
    fs::rename(folder / "other", folder / "file");
    EXPECT_EQ(callsAfterTurns(), 3);
    fs::remove(folder / "file");
    EXPECT_EQ(callsAfterTurns(), 4);
    std::ifstream(folder / "other").get();
    write(folder / "other");
    EXPECT_EQ(callsAfterTurns(), 4);
}

TEST_F(FileWatchTest, TellsThatTheFolderGoesWhereEachChangeIsAsked) {
    write(folder / "file");
    watch(folder / "file", FileWatch::Tell::EachChange);
    fs::remove_all(folder);
    callsAfterTurns();
    EXPECT_GT(calls, 0);
    const int before = calls;
    fs::create_directory(folder);
    write(folder / "file");
    EXPECT_GT(callsAfterTurns(), before);
}

TEST_F(FileWatchTest, TellsOfWhatALinkLeadsToOverEachLinkOnTheWay) {
    fs::create_directory(folder / "kept");
    write(folder / "kept" / "file");
    fs::create_symlink("kept/link", folder / "file");
    fs::create_symlink("file", folder / "kept" / "link");
    watch(folder / "file", FileWatch::Tell::EachChange);
    write(folder / "kept" / "file");
    EXPECT_EQ(callsAfterTurns(), 1);
    write(folder / "kept" / "other");
    EXPECT_EQ(callsAfterTurns(), 1);
    fs::create_symlink("other", folder / "kept" / "new");
    fs::rename(folder / "kept" / "new", folder / "kept" / "link");
    EXPECT_EQ(callsAfterTurns(), 2);
    write(folder / "kept" / "other");
    EXPECT_EQ(callsAfterTurns(), 3);
    write(folder / "kept" / "file");
    EXPECT_EQ(callsAfterTurns(), 3) << "nothing leads there any more";
}

TEST_F(FileWatchTest, WaitsForTheFoldersAboveToo) {
    watch(folder / "run" / "pulse" / "native");
    fs::create_directory(folder / "run");
    EXPECT_EQ(callsAfterTurns(), 0);
    fs::create_directory(folder / "run" / "pulse");
    EXPECT_EQ(callsAfterTurns(), 0);
    write(folder / "run" / "pulse" / "native");
    EXPECT_EQ(callsAfterTurns(), 1);
}

TEST_F(FileWatchTest, TakesFoldersAndFileInOneGo) {
    watch(folder / "run" / "pulse" / "native");
    fs::create_directories(folder / "run" / "pulse");
    write(folder / "run" / "pulse" / "native");
    EXPECT_EQ(callsAfterTurns(), 1);
}

TEST_F(FileWatchTest, SurvivesAFolderThatGoesAndComesBack) {
    fs::create_directory(folder / "pulse");
    watch(folder / "pulse" / "native");
    fs::remove_all(folder / "pulse");
    EXPECT_EQ(callsAfterTurns(), 0);
    fs::create_directory(folder / "pulse");
    callsAfterTurns();
    write(folder / "pulse" / "native");
    EXPECT_EQ(callsAfterTurns(), 1);
}

TEST_F(FileWatchTest, MayBeDestroyedByItsCall) {
    watching = std::make_unique<FileWatch>(folder / "native", [this] {
        ++calls;
        watching.reset();
    });
    write(folder / "native");
    EXPECT_EQ(callsAfterTurns(), 1);
}

TEST_F(FileWatchTest, TakesPathsThatLeadNowhere) {
    write(folder / "file");
    fs::create_symlink("loop", folder / "loop");
    for (const fs::path& file : {fs::path("/"), folder / "loop", folder / "file" / "native",
                                 folder / std::string(5000, 'x'), fs::path("/proc/1/root/x")}) {
        watch(file);
        EXPECT_EQ(callsAfterTurns(), 0) << file;
    }
}
