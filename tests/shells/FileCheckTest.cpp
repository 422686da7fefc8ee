#include "backends/plist/PlistCodec.hpp"
#include "config/CategoryList.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"
#include "shells/common/FileCheck.hpp"
#include "shells/common/FileReport.hpp"
#include "tests/support/MixerFiles.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace test {
namespace {

using Lines = std::vector<std::string>;

class FileCheckTest : public testing::Test {
 protected:
    FileCheckTest() {
        NSPropertyList::setCodec(std::make_shared<PlistCodec>());
        setPreferencesDirectory(files.folder());
    }
    ~FileCheckTest() override {
        setPreferencesDirectory("");
        NSPropertyList::setCodec(nullptr);
    }

    /// What is told, without the folder's name.
    Lines problems() const {
        Lines lines;
        for (const shell::FileProblem& problem : shell::problemsOfFiles()) {
            std::string line = lineOf(problem);
            const std::string folder = files.folder().string() + "/org.tarnwick.mixer";
            for (auto at = line.find(folder); at != std::string::npos; at = line.find(folder))
                line.erase(at, folder.size());
            lines.push_back(line);
        }
        return lines;
    }
    Lines problemsOfSettings(const std::string& entries) const {
        MixerFiles::write(files.settingsFile(),
                          "<plist>\n<dict>\n" + entries + "\n</dict>\n</plist>");
        return problems();
    }
    Lines problemsOfList(const std::string& entries) const {
        MixerFiles::write(files.categoryFile(),
                          "<plist>\n<array>\n" + entries + "\n</array>\n</plist>");
        return problems();
    }
    static std::string record(const std::string& name, const std::string& more = "") {
        return "<dict><key>categoryName</key><string>" + name +
               "</string><key>prettyCategoryName</key><string>Row</string><key>visible</key><true/"
               ">" +
               more + "</dict>";
    }
    /// As the mixer does when it opens.
    static void open() {
        if (!categoryListFromFile()) writeCategoryFile(initialCategoryList({}));
    }

    MixerFiles files;
};

TEST_F(FileCheckTest, FindsNothingInFilesThatDoWhatTheySay) {
    EXPECT_EQ(problems(), Lines{});
    open();
    EXPECT_EQ(problems(), Lines{});
    EXPECT_EQ(problemsOfSettings("<key>enableDebugLogging</key><false/>\n"
                                 "<key>bindRingerAndAV</key><string>YES</string>\n"
                                 "<key>displayPercentage</key><integer>1</integer>\n"
                                 "<key>selectedSkin</key><string>Cream Round</string>\n"
                                 "<key>thumbTintColor</key><integer>0</integer>\n"
                                 "<key>textColor</key><string>9</string>\n"
                                 "<key>minimumTrackTintColor</key><real>5</real>\n"
                                 "<key>maximumTrackTintColor</key><integer>3</integer>"),
              Lines{});
    EXPECT_EQ(problemsOfList(record("Audio/Video") + record("app:Firefox") + record("role:music") +
                             record("sink:x") + record("source:@DEFAULT_SOURCE@")),
              Lines{});
    EXPECT_EQ(problemsOfList(""), Lines{});
}

TEST_F(FileCheckTest, NamesTheKeyThatWasMeant) {
    EXPECT_EQ(problemsOfSettings("<key>selectedskin</key><string>Metal</string>\n"
                                 "<key>bindRingerAndAVVolumes</key><true/>\n"
                                 "<key>wallpaper</key><true/>"),
              (Lines{"prefs.plist:3:1: there is no key 'selectedskin'; did you mean "
                     "'selectedSkin'? it is passed over",
                     "prefs.plist:4:1: there is no key 'bindRingerAndAVVolumes'; did you mean "
                     "'bindRingerAndAV'? it is passed over",
                     "prefs.plist:5:1: there is no key 'wallpaper'; it is passed over"}));
    EXPECT_EQ(problemsOfList(record("Ringtone", "\n<key>visble</key><true/>")).back(),
              ".categories.plist:4:1: there is no key 'visble'; did you mean 'visible'? it is "
              "passed over");
}

TEST_F(FileCheckTest, FindsValuesOfAWrongKind) {
    EXPECT_EQ(
        problemsOfSettings("<key>displayPercentage</key><string>sometimes</string>\n"
                           "<key>bindRingerAndAV</key><array/>\n"
                           "<key>selectedSkin</key><integer>1</integer>\n"
                           "<key>textColor</key><string>red</string>\n"
                           "<key>thumbTintColor</key><real>2.5</real>"),
        (Lines{"prefs.plist:3:1: 'displayPercentage' is the text 'sometimes', and not <true/> "
               "or <false/>; it is taken for false",
               "prefs.plist:4:1: 'bindRingerAndAV' is an array, and not <true/> or <false/>; "
               "it is taken for false",
               "prefs.plist:5:1: 'selectedSkin' is a number, and not the name of a skin; the "
               "rows have no skin",
               "prefs.plist:6:1: 'textColor' is the text 'red', and not a colour's code from "
               "0 to 9; it is taken for red",
               "prefs.plist:7:1: 'thumbTintColor' is a number, and not a colour's code from "
               "0 to 9; it is taken for gray"}));
}

TEST_F(FileCheckTest, FindsSkinsAndColoursThatThereAreNot) {
    EXPECT_EQ(problemsOfSettings("<key>selectedSkin</key><string>Glass</string>\n"
                                 "<key>textColor</key><integer>10</integer>\n"
                                 "<key>thumbTintColor</key><integer>-1</integer>"),
              (Lines{"prefs.plist:3:1: there is no skin 'Glass'; the rows have no skin; those that "
                     "there are: Default iOS, Cream, Cream Round, Metal",
                     "prefs.plist:4:1: 'textColor' is 10, and not a colour's code from 0 to 9; it "
                     "is taken for white",
                     "prefs.plist:5:1: 'thumbTintColor' is -1, and not a colour's code from 0 to "
                     "9; it is taken for white"}));
    EXPECT_TRUE(
        problemsOfSettings("<key>selectedSkin</key><string>metal</string>")
            .front()
            .starts_with("prefs.plist:3:1: there is no skin 'metal'; did you mean 'Metal'?"));
}

TEST_F(FileCheckTest, FindsEntriesThatHaveNoRowOrNoVolume) {
    EXPECT_EQ(
        problemsOfList(record("AudioVideo") + "\n" + record("role:") + "\n<string>x</string>\n" +
                       "<dict><key>categoryName</key><string>Ringtone</string></dict>\n" +
                       "<dict><key>categoryName</key><integer>1</integer>\n"
                       "<key>prettyCategoryName</key><string>x</string>\n"
                       "<key>visible</key><string>perhaps</string></dict>"),
        (Lines{".categories.plist:3:7: there is no category 'AudioVideo'; did you mean "
               "'Audio/Video'? its row stays unknown",
               ".categories.plist:4:7: there is no category 'role:'; its row stays unknown",
               ".categories.plist:5:1: the entry is the text 'x', and not a <dict>; it has no row",
               ".categories.plist:6:1: the entry has no 'prettyCategoryName'; its row has no name",
               ".categories.plist:6:1: the entry has no 'visible'; it has no row",
               ".categories.plist:7:7: 'categoryName' is a number, and not a text; its row stays "
               "unknown",
               ".categories.plist:9:1: 'visible' is the text 'perhaps', and not <true/> or "
               "<false/>; it has no row"}));
}

TEST_F(FileCheckTest, SaysWhereAFileCannotBeRead) {
    EXPECT_EQ(problemsOfSettings("<key>selectedSkin</key><string>A & B</string>"),
              Lines{"prefs.plist:3:34: a bare '&', which is written '&amp;'; every setting has its "
                    "default"});
    MixerFiles::write(files.settingsFile(), "<plist><array/></plist>");
    EXPECT_EQ(problemsOfList("<dict>"),
              (Lines{"prefs.plist: the root is no <dict>; every setting has its default",
                     ".categories.plist:4:1: the wrong end tag: only </dict> closes the <dict> of "
                     "line 3; the list that a new user begins with stands in its place"}));
}

TEST_F(FileCheckTest, SaysWhereTheListIsThatWasReplacedUntilItIsOfNoUse) {
    problemsOfList(record("Tom & Jerry"));
    open();
    const Lines told = {
        ".categories.plist.unreadable-1:3:42: a bare '&', which is written '&amp;'; it is kept "
        "here, and the list that a new user begins with stands in its place until that is "
        "edited or this file removed"};
    EXPECT_EQ(problems(), told);
    open();
    EXPECT_EQ(problems(), told) << "as long as the user has not mended it";
    EXPECT_EQ(problemsOfList(record("Ringtone")), Lines{});
    std::filesystem::remove(files.categoryFile());
    open();
    std::filesystem::remove(files.categoryFile().string() + ".unreadable-1");
    EXPECT_EQ(problems(), Lines{});
}

TEST_F(FileCheckTest, SaysWhyTheListCouldNotBeWritten) {
    std::filesystem::create_directory(files.categoryFile());
    open();
    EXPECT_EQ(problems(),
              Lines{".categories.plist: is a directory; the list that a new user begins "
                    "with stands in its place; the file stays as it is, since it cannot "
                    "be kept: is a directory"});
    std::filesystem::remove(files.categoryFile());
    std::filesystem::create_symlink("/proc/nothing", files.categoryFile());
    open();
    EXPECT_TRUE(problems().at(0).starts_with(".categories.plist: the list cannot be written: "))
        << problems().at(0);
    std::filesystem::remove(files.categoryFile());
    open();
    EXPECT_EQ(problems(), Lines{});
}

TEST_F(FileCheckTest, ShowsTextsOfTheFileHarmlessAndNotTooLong) {
    const std::string skin = "a\nb\x1B[31m" + std::string(100, 'c');
    problemsOfSettings("<key>selectedSkin</key><string>" + skin + "</string>");
    const auto problems = shell::problemsOfSettings();
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_TRUE(problems[0].what.starts_with("there is no skin 'a b\uFFFD[31mccc"));
    EXPECT_TRUE(problems[0].what.ends_with("ccc...'"));
    EXPECT_EQ(problems[0].brief.at(0), "Settings, line 3: no skin 'a b\uFFFD[31mcccccccccc...'");
}

TEST_F(FileCheckTest, ListsFiftyProblemsAndCountsTheOthers) {
    std::string entries;
    for (int i = 0; i < 60; ++i)
        entries += "<integer>" + std::to_string(i) + "</integer>\n";
    const Lines lines = problemsOfList(entries);
    ASSERT_EQ(lines.size(), 51U);
    EXPECT_EQ(lines.back(), ".categories.plist: 10 more; they are not listed");
}

TEST_F(FileCheckTest, TellsEachProblemOnceAndAgainWhenItComesBack) {
    Lines told;
    shell::FileReport report([&](const std::string& line) { told.push_back(line); });
    report.refresh();
    EXPECT_EQ(report.notice(), std::nullopt);
    problemsOfSettings("<key>selectedSkin</key><string>Glass</string>");
    report.refresh();
    report.refresh();
    EXPECT_EQ(told.size(), 1U);
    EXPECT_EQ(report.notice(), "Settings, line 3: no skin 'Glass'");
    problemsOfSettings("");
    report.refresh();
    EXPECT_EQ(report.notice(), std::nullopt);
    problemsOfSettings("<key>selectedSkin</key><string>Glass</string>");
    report.refresh();
    EXPECT_EQ(told.size(), 2U);
}

TEST_F(FileCheckTest, LeavesTheManyToTheCommand) {
    problemsOfList(record("a") + record("b") + record("c") + record("d") + record("e"));
    shell::FileReport report([](const std::string&) {});
    report.refresh();
    const std::string notice = report.notice().value();
    EXPECT_EQ(std::ranges::count(notice, '\n'), 4);
    EXPECT_TRUE(notice.ends_with("\n1 more: tarnwickctl check lists it")) << notice;
}

TEST_F(FileCheckTest, HasLinesThatFitOnAPhone) {
    problemsOfSettings("<key>selectedSkin</key><string>A & B</string>");
    problemsOfList(record("Tom & Jerry"));
    open();
    for (const shell::FileProblem& problem : shell::problemsOfFiles())
        for (const std::string& line : problem.brief)
            EXPECT_LE(line.size(), 52U) << line;
}

}  // namespace
}  // namespace test
