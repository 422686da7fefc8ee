#include "backends/plist/PlistCodec.hpp"
#include "platform/foundation/KeptFile.hpp"
#include "tests/foundation/TemporaryFolder.hpp"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

namespace {

using Array = PropertyValue::Array;
using Dictionary = PropertyValue::Dictionary;

constexpr uid_t nobody = 65534;
constexpr const char* damaged = "<plist><array><string>Tom & Jerry</string></array></plist>";

/// What a user without privileges sees, whoever runs the test.
bool asOrdinaryUser(const std::function<bool()>& isSo) {
    const pid_t child = fork();
    if (child == 0) {
        if (getuid() == 0 && setuid(nobody) != 0) _exit(2);
        _exit(isSo() ? 0 : 1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) < 2);
    return status == 0;
}

class KeptFileTest : public testing::Test {
 protected:
    KeptFileTest() { NSPropertyList::setCodec(std::make_shared<PlistCodec>()); }
    ~KeptFileTest() override { NSPropertyList::setCodec(nullptr); }

    bool writeList(const std::string& name = "c.plist") const {
        return NSPropertyList::writeToFileAtomically(list, folder / name);
    }
    bool isList(const std::string& name = "c.plist") const {
        return NSPropertyList::arrayWithContentsOfFile(folder / name) == list;
    }
    bool exists(const std::string& name) const {
        return std::filesystem::exists(std::filesystem::symlink_status(folder / name));
    }
    void giveToNobody(const std::string& name, mode_t mode) const {
        ASSERT_EQ(chmod((folder / name).c_str(), mode), 0);
        if (getuid() != 0) return;
        ASSERT_EQ(chown((folder / name).c_str(), nobody, nobody), 0);
        ASSERT_EQ(chown(folder.path().c_str(), nobody, nobody), 0);
    }

    TemporaryFolder folder;
    const PropertyValue list{Array{PropertyValue("new")}};
};

TEST_F(KeptFileTest, HoldsWhatCouldNotBeRead) {
    for (const std::string& contents :
         {std::string(damaged), std::string("<plist><array><dict></array></plist>"), std::string(),
          std::string(1000, '\0'), std::string("bplist00")}) {
        folder.write("c.plist", contents);
        EXPECT_TRUE(writeList()) << contents;
        EXPECT_TRUE(isList());
        EXPECT_EQ(folder.read("c.plist.unreadable-1"), contents);
        EXPECT_EQ(folder.count(), 2U);
        std::filesystem::remove(folder / "c.plist.unreadable-1");
    }
}

TEST_F(KeptFileTest, HoldsARootOfAnotherKind) {
    folder.write("c.plist", "<plist><dict/></plist>");
    EXPECT_TRUE(writeList());
    EXPECT_EQ(folder.read("c.plist.unreadable-1"), "<plist><dict/></plist>");
    folder.write("s.plist", "<plist><array/></plist>");
    EXPECT_TRUE(
        NSPropertyList::writeToFileAtomically(PropertyValue(Dictionary()), folder / "s.plist"));
    EXPECT_EQ(folder.read("s.plist.unreadable-1"), "<plist><array/></plist>");
}

TEST_F(KeptFileTest, IsNotMadeOfWhatCanBeRead) {
    EXPECT_TRUE(writeList());
    folder.write("c.plist", "<plist><array/></plist>");
    EXPECT_TRUE(writeList());
    EXPECT_TRUE(isList());
    EXPECT_EQ(folder.count(), 1U);
}

TEST_F(KeptFileTest, HoldsAFileAboveTheLargestSize) {
    const std::string path = folder.write("c.plist", "<plist><array/></plist>");
    std::filesystem::resize_file(path, NSPropertyList::maximumFileBytes + 1);
    EXPECT_TRUE(writeList());
    EXPECT_TRUE(isList());
    EXPECT_EQ(std::filesystem::file_size(folder / "c.plist.unreadable-1"),
              NSPropertyList::maximumFileBytes + 1);
}

TEST_F(KeptFileTest, TakesTheNextNumberAndNeverAnEarlierOne) {
    folder.write("c.plist.unreadable-1", "another");
    std::filesystem::create_symlink("nowhere", folder / "c.plist.unreadable-2");
    std::filesystem::create_directory(folder / "c.plist.unreadable-3");
    folder.write("c.plist", damaged);
    // A link to the file itself has the same contents, and would be no copy.
    std::filesystem::create_symlink("c.plist", folder / "c.plist.unreadable-4");
    EXPECT_TRUE(writeList());
    EXPECT_EQ(folder.read("c.plist.unreadable-1"), "another");
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "c.plist.unreadable-2"));
    EXPECT_EQ(folder.read("c.plist.unreadable-5"), damaged);
    EXPECT_TRUE(isList());
}

TEST_F(KeptFileTest, IsNotMadeTwiceOfTheSameContents) {
    folder.write("c.plist.unreadable-1", "another");
    folder.write("c.plist.unreadable-2", damaged);
    folder.write("c.plist", damaged);
    EXPECT_TRUE(writeList());
    EXPECT_TRUE(isList());
    EXPECT_FALSE(exists("c.plist.unreadable-3"));
    EXPECT_EQ(folder.count(), 3U);
}

TEST_F(KeptFileTest, LiesBesideTheFileBehindASymbolicLink) {
    folder.write("real/own.plist", damaged);
    std::filesystem::create_symlink("real/own.plist", folder / "c.plist");
    EXPECT_TRUE(writeList());
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "c.plist"));
    EXPECT_EQ(folder.read("real/own.plist.unreadable-1"), damaged);
    EXPECT_TRUE(isList("real/own.plist"));
    EXPECT_EQ(folder.count(), 2U);
}

TEST_F(KeptFileTest, KeepsItsModeAndTheNewOneCanBeRead) {
    folder.write("c.plist", damaged);
    giveToNobody("c.plist", 0000);
    EXPECT_TRUE(asOrdinaryUser([&] { return writeList() && isList(); }));
    EXPECT_EQ(folder.mode("c.plist"), 0400U);
    EXPECT_EQ(folder.mode("c.plist.unreadable-1"), 0000U);
    ASSERT_EQ(chmod((folder / "c.plist.unreadable-1").c_str(), 0600), 0);
    EXPECT_EQ(folder.read("c.plist.unreadable-1"), damaged);
}

TEST_F(KeptFileTest, MayBeSomebodyElses) {
    if (getuid() != 0) GTEST_SKIP() << "only root can make such a file";
    folder.write("c.plist", damaged);
    giveToNobody("c.plist", 0600);
    ASSERT_EQ(chown((folder / "c.plist").c_str(), 0, 0), 0);
    EXPECT_TRUE(asOrdinaryUser([&] { return writeList() && isList(); }));
    EXPECT_EQ(folder.read("c.plist.unreadable-1"), damaged);
}

TEST_F(KeptFileTest, IsWhatTheWriteDependsOn) {
    folder.write("c.plist", damaged);
    giveToNobody("c.plist", 0600);
    ASSERT_EQ(chmod(folder.path().c_str(), 0500), 0);
    EXPECT_FALSE(asOrdinaryUser([&] { return writeList(); }));
    ASSERT_EQ(chmod(folder.path().c_str(), 0700), 0);
    EXPECT_EQ(folder.read("c.plist"), damaged);
    EXPECT_EQ(folder.count(), 1U);
}

TEST_F(KeptFileTest, NeedsANameThatFits) {
    const std::string name(255, 'n');  // None longer can be.
    folder.write(name, damaged);
    EXPECT_FALSE(writeList(name));
    EXPECT_EQ(folder.read(name), damaged);
    EXPECT_EQ(folder.count(), 1U);
}

TEST_F(KeptFileTest, NeedsAFreeNumber) {
    for (int number = 1; number <= 999; ++number)
        folder.write("c.plist.unreadable-" + std::to_string(number), "another");
    folder.write("c.plist", damaged);
    EXPECT_FALSE(writeList());
    EXPECT_EQ(folder.read("c.plist"), damaged);
    EXPECT_EQ(folder.count(), 1000U);
}

TEST_F(KeptFileTest, IsMadeOfNoFolderPipeOrDevice) {
    std::filesystem::create_directory(folder / "dir.plist");
    ASSERT_EQ(mkfifo((folder / "pipe.plist").c_str(), 0600), 0);
    std::filesystem::create_symlink("/dev/null", folder / "null.plist");
    for (const char* name : {"dir.plist", "pipe.plist", "null.plist"})
        EXPECT_FALSE(writeList(name)) << name;
    EXPECT_EQ(folder.count(), 3U);
}

TEST_F(KeptFileTest, GoesAgainUnlessTheNewOneTakesItsPlace) {
    const std::string path = folder.write("c.plist", damaged);
    {
        KeptFile kept(path);
        EXPECT_FALSE(kept.keep());
        EXPECT_EQ(folder.read("c.plist.unreadable-1"), damaged);
    }
    EXPECT_EQ(folder.read("c.plist"), damaged);
    EXPECT_EQ(folder.count(), 1U);
}

}  // namespace
