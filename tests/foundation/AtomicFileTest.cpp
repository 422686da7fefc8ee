#include "platform/foundation/FileContents.hpp"
#include "tests/foundation/TemporaryFolder.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>

namespace {

/// The process's mask of file modes, as the test wants it.
class ScopedMask {
 public:
    explicit ScopedMask(mode_t mask) : before_(umask(mask)) {}
    ~ScopedMask() { umask(before_); }
    ScopedMask(const ScopedMask&) = delete;
    ScopedMask& operator=(const ScopedMask&) = delete;

 private:
    mode_t before_;
};

class AtomicFile : public testing::Test {
 protected:
    bool write(const std::string& name, const std::string& bytes) const {
        return !writeFileAtomically(folder / name, bytes);
    }
    TemporaryFolder folder;
};

TEST_F(AtomicFile, IsWrittenWholeAndLeavesNothingElse) {
    const std::string bytes(300000, 'x');
    EXPECT_TRUE(write("a", bytes));
    EXPECT_EQ(folder.read("a"), bytes);
    EXPECT_TRUE(write("a", ""));
    EXPECT_EQ(folder.read("a"), "");
    EXPECT_EQ(folder.count(), 1U);
}

TEST_F(AtomicFile, ReplacesTheFileAndDoesNotWriteIntoIt) {
    folder.write("a", "old contents");
    const int reader = open((folder / "a").c_str(), O_RDONLY);
    ASSERT_TRUE(write("a", "new"));
    char buffer[32] = {};
    EXPECT_EQ(read(reader, buffer, sizeof buffer), 12) << "who has it open keeps the old file";
    close(reader);
    EXPECT_EQ(folder.read("a"), "new");
}

TEST_F(AtomicFile, IsReadableByAllAsFarAsTheMaskAllows) {
    {
        const ScopedMask mask(022);
        ASSERT_TRUE(write("a", "x"));
        EXPECT_EQ(folder.mode("a"), 0644U);
    }
    const ScopedMask mask(077);
    ASSERT_TRUE(write("b", "x"));
    EXPECT_EQ(folder.mode("b"), 0600U);
}

TEST_F(AtomicFile, KeepsTheModeOfTheFileItReplaces) {
    const ScopedMask mask(022);
    for (const mode_t mode : {0600U, 0444U, 0666U, 0755U}) {
        folder.write("a", "old");
        ASSERT_EQ(chmod((folder / "a").c_str(), mode), 0);
        EXPECT_TRUE(write("a", "new"));
        EXPECT_EQ(folder.mode("a"), mode);
        std::filesystem::remove(folder / "a");
    }
}

TEST_F(AtomicFile, MakesMissingFoldersForTheUserAlone) {
    const ScopedMask mask(022);
    EXPECT_TRUE(write("one/two/a", "x"));
    EXPECT_EQ(folder.read("one/two/a"), "x");
    EXPECT_EQ(folder.mode("one"), 0700U);
    EXPECT_EQ(folder.mode("one/two"), 0700U);
}

TEST_F(AtomicFile, ReplacesTheFileBehindASymbolicLink) {
    folder.write("real/a", "old");
    std::filesystem::create_directory(folder / "links");
    std::filesystem::create_symlink("../real/a", folder / "links/relative");
    std::filesystem::create_symlink(folder / "links/relative", folder / "absolute");
    EXPECT_TRUE(write("absolute", "new"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "absolute"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "links/relative"));
    EXPECT_FALSE(std::filesystem::is_symlink(folder / "real/a"));
    EXPECT_EQ(folder.read("real/a"), "new");
}

TEST_F(AtomicFile, MakesTheFileThatASymbolicLinkPromises) {
    std::filesystem::create_symlink("later/a", folder / "link");
    EXPECT_TRUE(write("link", "x"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
    EXPECT_EQ(folder.read("later/a"), "x");
}

TEST_F(AtomicFile, RefusesACircleOfLinks) {
    std::filesystem::create_symlink("b", folder / "a");
    std::filesystem::create_symlink("a", folder / "b");
    EXPECT_FALSE(write("a", "x"));
    EXPECT_EQ(folder.count(), 2U);
}

TEST_F(AtomicFile, RefusesToReplaceWhatIsNoFile) {
    std::filesystem::create_directory(folder / "dir");
    EXPECT_FALSE(write("dir", "x"));
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_FALSE(write("pipe", "x"));
    EXPECT_TRUE(std::filesystem::is_fifo(folder / "pipe"));
    std::filesystem::create_symlink("/dev/null", folder / "null");
    EXPECT_FALSE(write("null", "x"));
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
    EXPECT_EQ(folder.count(), 3U);
}

TEST_F(AtomicFile, RefusesPathsThatLeadNowhere) {
    folder.write("file", "x");
    EXPECT_FALSE(write("file/a", "x"));
    EXPECT_FALSE(write("folder/", "x"));
    EXPECT_FALSE(write(std::string(300, 'n'), "x"));
    EXPECT_TRUE(writeFileAtomically("", "x"));
    EXPECT_EQ(folder.read("file"), "x");
}

TEST_F(AtomicFile, TakesTheLongestName) {
    EXPECT_TRUE(write(std::string(255, 'n'), "x"));
}

TEST_F(AtomicFile, IsWrittenRelativeToTheWorkingFolder) {
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    EXPECT_FALSE(writeFileAtomically("a", "x"));
    std::filesystem::current_path(before);
    EXPECT_EQ(folder.read("a"), "x");
}

TEST_F(AtomicFile, LeavesTheOldFileWhenTheNewOneDoesNotFit) {
    folder.write("a", "old");
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{10, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const bool isWritten = write("a", std::string(100, 'x'));
    setrlimit(RLIMIT_FSIZE, &before);
    (void)std::signal(SIGXFSZ, handler);
    EXPECT_FALSE(isWritten);
    EXPECT_EQ(folder.read("a"), "old");
    EXPECT_EQ(folder.count(), 1U) << "the temporary file stayed";
}

}  // namespace
