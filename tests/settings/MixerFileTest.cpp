#include "platform/foundation/NSRunLoop.hpp"
#include "shells/settings/files/CategoriesFile.hpp"
#include "shells/settings/files/SettingsFile.hpp"
#include "tests/settings/FilesFixture.hpp"
#include "tests/support/VirtualClock.hpp"

#include <fcntl.h>
#include <glib.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <thread>

namespace {

namespace fs = std::filesystem;
using settings::CategoriesFile;
using settings::ChangedBy;
using settings::SettingsFile;
using settings::SettingsKey::textColor;
using Kind = settings::FileState::Kind;

const PropertyValue blue(5);
const std::string malformed = "<plist>\n<dict>\n  <key>a</key><true/>\n</plist>";

class MixerFileTest : public FilesFixture {
 protected:
    fs::path beside(const char* mark) const { return files.settingsFile().native() + mark; }

    /// Runs it in a process that permissions apply to. Answers what it says there.
    static std::string asNobody(const std::function<settings::Trouble()>& action) {
        int ends[2];
        if (pipe(ends) != 0) return "no pipe";
        const pid_t child = fork();
        if (child == 0) {
            constexpr uid_t nobody = 65534;
            if (getuid() == 0 && setuid(nobody) != 0) _exit(2);
            const std::string said = action().value_or("done");
            (void)!write(ends[1], said.data(), said.size());
            _exit(0);
        }
        close(ends[1]);
        std::string said(1000, '\0');
        said.resize(std::max<ssize_t>(0, read(ends[0], said.data(), said.size())));
        close(ends[0]);
        waitpid(child, nullptr, 0);
        return said;
    }
};

TEST_F(MixerFileTest, TellsWhereAMalformedFileIsWrongAndNeverTouchesIt) {
    test::MixerFiles::write(files.settingsFile(), malformed);
    SettingsFile file;
    EXPECT_EQ(file.state().kind, Kind::Malformed);
    EXPECT_EQ(file.state().place.line, 4);
    EXPECT_TRUE(contains(file.set(textColor, blue), "malformed"));
    EXPECT_EQ(file.values().textColor, Settings().textColor);
    EXPECT_EQ(contents(files.settingsFile()), malformed);
    EXPECT_EQ(names().size(), 1U);
}

TEST_F(MixerFileTest, TakesARootOfAnotherKindForMalformed) {
    test::MixerFiles::write(files.settingsFile(), "<array/>");
    test::MixerFiles::write(files.categoryFile(), "<dict/>");
    EXPECT_EQ(SettingsFile().state().reason, "the root is no <dict>");
    CategoriesFile file;
    EXPECT_EQ(file.state().kind, Kind::Malformed);
    EXPECT_TRUE(file.add("app:A", "A"));
    EXPECT_EQ(contents(files.categoryFile()), "<dict/>");
}

TEST_F(MixerFileTest, LeavesAFileThatAnEditorHasJustEmptied) {
    files.writeSettings("<key>a</key><true/>");
    const std::string before = contents(files.settingsFile());
    SettingsFile file;
    test::MixerFiles::write(files.settingsFile(), "");
    EXPECT_TRUE(contains(file.set(textColor, blue), "the file is empty"));
    EXPECT_TRUE(file.set(textColor, blue));
    EXPECT_EQ(contents(files.settingsFile()), "");
    test::MixerFiles::write(files.settingsFile(), before);
    EXPECT_EQ(file.set(textColor, blue), std::nullopt);
    EXPECT_TRUE(file.isSet("a"));
}

TEST_F(MixerFileTest, TellsWhyAFileCannotBeRead) {
    fs::create_directory(files.settingsFile());
    SettingsFile file;
    EXPECT_EQ(file.state().kind, Kind::Unreadable);
    EXPECT_EQ(file.state().reason, "Is a directory");
    EXPECT_TRUE(contains(file.set(textColor, blue), "cannot be read: Is a directory"));
    EXPECT_TRUE(contains(file.startAnew(), "Is a directory"));
}

TEST_F(MixerFileTest, ReadsNoFileThatIsTooLarge) {
    test::MixerFiles::write(files.settingsFile(), "<dict/>");
    fs::resize_file(files.settingsFile(), NSPropertyList::maximumFileBytes + 1);
    SettingsFile file;
    EXPECT_EQ(file.state().kind, Kind::Unreadable);
    EXPECT_TRUE(file.set(textColor, blue));
}

TEST_F(MixerFileTest, WritesNoFileThatWouldBeTooLarge) {
    files.writeSettings("");
    const std::string before = contents(files.settingsFile());
    SettingsFile file;
    const PropertyValue huge(std::string(NSPropertyList::maximumFileBytes, 'x'));
    EXPECT_TRUE(file.set("a", huge));
    EXPECT_EQ(contents(files.settingsFile()), before);
}

TEST_F(MixerFileTest, BeginsAnewAndKeepsTheMalformedFile) {
    test::MixerFiles::write(files.settingsFile(), malformed);
    SettingsFile file;
    EXPECT_EQ(file.startAnew(), std::nullopt);
    EXPECT_EQ(file.state().kind, Kind::Read);
    EXPECT_EQ(contents(beside(".unreadable-1")), malformed);
    EXPECT_EQ(contents(files.settingsFile()),
              PlistCodec().encode(PropertyValue(PropertyValue::Dictionary{})));
    EXPECT_EQ(file.set(textColor, blue), std::nullopt);
}

TEST_F(MixerFileTest, DoesNotBeginAnewWhereSomebodyMendedTheFile) {
    test::MixerFiles::write(files.settingsFile(), malformed);
    SettingsFile file;
    files.writeSettings("<key>a</key><true/>");
    const std::string mended = contents(files.settingsFile());
    EXPECT_TRUE(contains(file.startAnew(), "can be used again"));
    EXPECT_EQ(contents(files.settingsFile()), mended);
    EXPECT_TRUE(file.isSet("a")) << "what is there is shown";
}

TEST_F(MixerFileTest, ResetsAGoodFileAndKeepsACopyOfIt) {
    files.writeCategories({{"app:A", "Mine"}});
    const std::string before = contents(files.categoryFile());
    CategoriesFile file;
    EXPECT_EQ(file.reset(), std::nullopt);
    EXPECT_EQ(file.rows().size(), initialCategoryList(currentDeviceKind()).size());
    EXPECT_EQ(contents(files.categoryFile().native() + ".copy-1"), before);
}

TEST_F(MixerFileTest, ListsItsCopiesNewestFirstAndTakesOne) {
    files.writeSettings("<key>now</key><true/>");
    const std::string now = contents(files.settingsFile());
    const std::string old = "<!-- old --><dict><key>old</key><true/></dict>";
    test::MixerFiles::write(beside(".unreadable-1"), malformed);
    test::MixerFiles::write(beside(".copy-2"), old);
    for (const char* other : {".copy-", ".copy-x", ".unreadable-1x", ".bak"})
        test::MixerFiles::write(beside(other), old);
    const auto hourAgo = fs::last_write_time(beside(".copy-2")) - std::chrono::hours(1);
    fs::last_write_time(beside(".unreadable-1"), hourAgo);
    SettingsFile file;
    const auto copies = file.copies();
    ASSERT_EQ(copies.size(), 2U);
    EXPECT_EQ(copies[0].path, beside(".copy-2"));
    EXPECT_TRUE(copies[0].isReadable);
    EXPECT_FALSE(copies[1].isReadable);
    EXPECT_EQ(copies[0].changed - copies[1].changed, 3600);

    EXPECT_TRUE(contains(file.useCopy(copies[1]), "The copy cannot be used"));
    EXPECT_EQ(contents(files.settingsFile()), now);
    EXPECT_EQ(file.useCopy(copies[0]), std::nullopt);
    EXPECT_EQ(contents(files.settingsFile()), old);
    EXPECT_TRUE(file.isSet("old"));
    EXPECT_EQ(contents(beside(".copy-1")), now);
}

TEST_F(MixerFileTest, KeepsTheModeAndTheLinkOfTheFile) {
    const fs::path target = files.folder() / "elsewhere" / "settings";
    fs::create_directory(target.parent_path());
    test::MixerFiles::write(target, "<dict/>");
    ASSERT_EQ(chmod(target.c_str(), 0640), 0);
    fs::create_symlink("elsewhere/settings", files.settingsFile());
    SettingsFile file;
    EXPECT_EQ(file.set(textColor, blue), std::nullopt);
    EXPECT_TRUE(fs::is_symlink(files.settingsFile()));
    EXPECT_TRUE(contents(target).find("textColor") != std::string::npos);
    struct stat status {};
    ASSERT_EQ(stat(target.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640U);
    EXPECT_EQ(file.reset(), std::nullopt);
    EXPECT_EQ(file.copies().size(), 1U) << "beside the target";
}

TEST_F(MixerFileTest, TellsThatTheDiskIsFullAndShowsTheOldValue) {
    files.writeSettings("<key>textColor</key><integer>1</integer>");
    const std::string before = contents(files.settingsFile());
    SettingsFile file;
    rlimit usual{};
    getrlimit(RLIMIT_FSIZE, &usual);
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{16, usual.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const auto trouble = file.set(textColor, blue);
    setrlimit(RLIMIT_FSIZE, &usual);
    EXPECT_EQ(trouble, "The file cannot be written: File too large");
    EXPECT_EQ(SettingsFile::codeOf(file.values().textColor), 1);
    EXPECT_EQ(contents(files.settingsFile()), before);
    EXPECT_EQ(names().size(), 1U);
}

TEST_F(MixerFileTest, WritesNeitherAReadOnlyFileNorIntoAReadOnlyFolder) {
    files.writeSettings("");
    const std::string before = contents(files.settingsFile());
    SettingsFile file;
    const auto set = [&] { return file.set(textColor, blue); };
    ASSERT_EQ(chmod(files.folder().c_str(), 0777), 0);
    ASSERT_EQ(chmod(files.settingsFile().c_str(), 0444), 0);
    EXPECT_EQ(asNobody(set), "The file cannot be written: Permission denied");
    ASSERT_EQ(chmod(files.settingsFile().c_str(), 0666), 0);
    ASSERT_EQ(chmod(files.folder().c_str(), 0555), 0);
    EXPECT_EQ(asNobody(set), "The file cannot be written: Permission denied");
    ASSERT_EQ(chmod(files.folder().c_str(), 0777), 0);
    EXPECT_EQ(contents(files.settingsFile()), before);
    EXPECT_EQ(asNobody(set), "done");
}

TEST_F(MixerFileTest, MakesTheFolderThatIsMissing) {
    setPreferencesDirectory(files.folder() / "a" / "b");
    SettingsFile file;
    EXPECT_EQ(file.set(textColor, blue), std::nullopt);
    EXPECT_TRUE(SettingsFile().isSet(textColor));
}

TEST_F(MixerFileTest, LeavesNothingBesideTheFile) {
    SettingsFile file;
    EXPECT_EQ(file.set(textColor, blue), std::nullopt);
    EXPECT_EQ(names(), std::vector<std::string>{files.settingsFile().filename()});
}

TEST_F(MixerFileTest, WaitsForAnotherProgramsWriteButNotForEver) {
    SettingsFile file;
    const int folder = open(files.folder().c_str(), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(flock(folder, LOCK_EX), 0);
    EXPECT_TRUE(contains(file.set(textColor, blue), "Another program"));
    EXPECT_TRUE(names().empty());
    ASSERT_EQ(flock(folder, LOCK_UN), 0);
    EXPECT_EQ(file.set(textColor, blue), std::nullopt);
    close(folder);
}

TEST_F(MixerFileTest, LosesNoEditOfTwoProgramsThatWriteAtTheSameTime) {
    constexpr int edits = 20;
    const auto editAll = [&](const std::string& name) -> settings::Trouble {
        SettingsFile file;
        for (int i = 0; i < edits; ++i)
            if (auto trouble = file.set(name + std::to_string(i), PropertyValue(i))) return trouble;
        return std::nullopt;
    };
    const pid_t child = fork();
    if (child == 0) _exit(editAll("child") ? 1 : 0);
    EXPECT_EQ(editAll("parent"), std::nullopt);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(SettingsFile().root().dictionary()->size(), std::size_t{2 * edits});
}

TEST_F(MixerFileTest, TellsWhoChangedWhatIsShown) {
    SettingsFile file;
    std::vector<ChangedBy> told;
    file.setChangedHandler([&](ChangedBy by) { told.push_back(by); });
    EXPECT_EQ(file.set(textColor, blue), std::nullopt);
    EXPECT_EQ(file.set(textColor, blue), std::nullopt) << "no change";
    file.refresh();
    EXPECT_EQ(told, std::vector{ChangedBy::Us});
    files.writeSettings("");
    file.refresh();
    test::MixerFiles::write(files.settingsFile(), malformed);
    EXPECT_TRUE(file.set(textColor, blue));
    fs::remove(files.settingsFile());
    file.refresh();
    EXPECT_EQ(told, (std::vector{ChangedBy::Us, ChangedBy::Others, ChangedBy::Others,
                                 ChangedBy::Others}));
    EXPECT_EQ(file.state().kind, Kind::Missing);
}

/// With a clock of its own: the kernel has its events queued by the time that a write returns.
class WatchedFileTest : public MixerFileTest {
 protected:
    WatchedFileTest() {
        file->setChangedHandler([this](ChangedBy by) { told.push_back(by); });
    }
    void settle() {
        while (g_main_context_iteration(nullptr, FALSE)) {
        }
        clock.advance(0.1);
        NSRunLoop::mainRunLoop().runDue();
    }

    VirtualClock clock;
    std::unique_ptr<SettingsFile> file = std::make_unique<SettingsFile>();
    std::vector<ChangedBy> told;
    const std::vector<ChangedBy> once{ChangedBy::Others};
};

TEST_F(WatchedFileTest, TellsOnceWhatAnotherProgramWrites) {
    files.writeSettings("<key>a</key><true/>");
    EXPECT_TRUE(told.empty());
    settle();
    EXPECT_EQ(told, once);
    EXPECT_TRUE(file->isSet("a"));
    settle();
    EXPECT_EQ(told, once);
    EXPECT_EQ(NSRunLoop::mainRunLoop().nextDue(), std::nullopt) << "nothing wakes up";
}

TEST_F(WatchedFileTest, TellsNothingForItsOwnWrites) {
    EXPECT_EQ(file->set(textColor, blue), std::nullopt);
    settle();
    EXPECT_EQ(told, std::vector{ChangedBy::Us});
}

TEST_F(WatchedFileTest, TellsNothingForTheSameBytes) {
    files.writeSettings("");
    settle();
    files.writeSettings("");
    settle();
    EXPECT_EQ(told, once);
}

TEST_F(WatchedFileTest, WaitsUntilAWriterIsDone) {
    for (int part = 0; part < 3; ++part) {
        test::MixerFiles::write(files.settingsFile(), malformed);
        while (g_main_context_iteration(nullptr, FALSE)) {
        }
        clock.advance(0.09);
        NSRunLoop::mainRunLoop().runDue();
    }
    EXPECT_TRUE(told.empty());
    files.writeSettings("");
    settle();
    EXPECT_EQ(told, once);
    EXPECT_EQ(file->state().kind, Kind::Read);
}

TEST_F(WatchedFileTest, FollowsALinkAndItsTarget) {
    const fs::path other = files.folder() / "elsewhere" / "settings";
    fs::create_directory(other.parent_path());
    test::MixerFiles::write(other, "<dict/>");
    fs::create_symlink(other, files.settingsFile());
    settle();
    EXPECT_EQ(told, once);
    test::MixerFiles::write(other, "<dict><key>a</key><true/></dict>");
    settle();
    EXPECT_TRUE(file->isSet("a"));
    fs::remove(files.settingsFile());
    files.writeSettings("<key>b</key><true/>");
    settle();
    EXPECT_TRUE(file->isSet("b"));
}

TEST_F(WatchedFileTest, MayBeDestroyedWhenItTells) {
    file->setChangedHandler([this](ChangedBy) { file.reset(); });
    files.writeSettings("");
    settle();
    EXPECT_EQ(file, nullptr);
}

TEST_F(MixerFileTest, MayBeDestroyedByItsHandler) {
    auto file = std::make_unique<SettingsFile>();
    file->setChangedHandler([&](ChangedBy) { file.reset(); });
    EXPECT_EQ(file->set(textColor, blue), std::nullopt);
    EXPECT_EQ(file, nullptr);
}

}  // namespace
