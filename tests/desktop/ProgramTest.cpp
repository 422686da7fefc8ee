#include "tests/desktop/Program.hpp"
#include "tests/desktop/XServer.hpp"
#include "tests/locale/CommaLocale.hpp"
#include "tests/support/MixerFiles.hpp"

#include <cairo.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <utility>

namespace test {
namespace {

using testing::Test;

/// Width and height; 0 for what is no picture.
std::pair<int, int> pictureSize(const std::filesystem::path& file) {
    cairo_surface_t* picture = cairo_image_surface_create_from_png(file.c_str());
    const std::pair size = {cairo_image_surface_get_width(picture),
                            cairo_image_surface_get_height(picture)};
    cairo_surface_destroy(picture);
    return size;
}

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

class ProgramTest : public Test {
 protected:
    Ended run(std::vector<std::string> arguments) {
        for (const char* word : {"--preferences", files.folder().c_str(), "--model", "iPad4,1"})
            arguments.emplace_back(word);
        return runProgram(arguments, {{"XDG_CACHE_HOME", cache.string()}});
    }

    MixerFiles files;
    std::filesystem::path cache = files.folder() / "cache";
    std::filesystem::path picture = files.folder() / "picture.png";
};

TEST_F(ProgramTest, HelpNamesEveryOption) {
    const Ended ended = runProgram({"--help"});
    EXPECT_EQ(ended.status, 0);
    for (const char* option :
         {"--simulate", "--preferences", "--model", "--paint", "--help", "--version"})
        EXPECT_TRUE(contains(ended.output, option)) << option;
    EXPECT_EQ(ended.complaints, "");
}

TEST_F(ProgramTest, VersionIsTheProjects) {
    const Ended ended = runProgram({"--version"});
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.output, "tarnwick " TARNWICK_VERSION "\n");
}

TEST_F(ProgramTest, SpeaksTheUsersLanguageAndKeepsCaptionsNumbersAndStatus) {
    if (!CommaLocale().isActive()) GTEST_SKIP() << "no German locale on this system";
    const Environment german = {{"LC_ALL", "de_DE.UTF-8"},
                                {"LANGUAGE", ""},
                                {"LOCPATH", TARNWICK_TEST_LOCALES},
                                {"XDG_CACHE_HOME", cache.string()}};
    const std::vector<std::string> rows = {"--simulate", "--preferences", files.folder().string()};
    const Ended ended = runProgram(rows, german);
    EXPECT_EQ(ended.status, 0);
    EXPECT_TRUE(contains(ended.complaints, "es gibt keine Anzeige")) << ended.complaints;
    EXPECT_TRUE(contains(ended.output, "Das Bild ist ")) << ended.output;
    const auto rowsOf = [](const std::string& text) { return text.substr(0, text.find("\n\n")); };
    EXPECT_EQ(rowsOf(ended.output),
              rowsOf(runProgram(rows, {{"XDG_CACHE_HOME", cache.string()}}).output));
    const Ended refused = runProgram({"--margin", "wide"}, german);
    EXPECT_EQ(refused.status, 2);
    EXPECT_TRUE(contains(refused.complaints, "der Abstand ist eine Zahl")) << refused.complaints;
}

TEST_F(ProgramTest, UnknownOptionIsRefused) {
    const Ended ended = runProgram({"--simulated"});
    EXPECT_EQ(ended.status, 2);
    EXPECT_TRUE(contains(ended.complaints, "--simulated"));
    EXPECT_EQ(ended.output, "");
}

TEST_F(ProgramTest, OptionWithoutItsValueIsRefused) {
    EXPECT_EQ(runProgram({"--paint"}).status, 2);
    EXPECT_EQ(runProgram({"--paint="}).status, 2);
}

TEST_F(ProgramTest, PaintsWhatIsWrongWithTheFilesToo) {
    run({"--simulate", "--paint", picture.string()});
    const int before = pictureSize(picture).second;
    files.writeSettings("<key>selectedSkinn</key><string>Metal</string>");
    const Ended ended = run({"--simulate", "--paint", picture.string()});
    EXPECT_EQ(ended.status, 0);
    EXPECT_TRUE(contains(ended.complaints, "tarnwick: " + files.settingsFile().string() + ":1:"));
    EXPECT_TRUE(contains(ended.complaints, "did you mean 'selectedSkin'?")) << ended.complaints;
    constexpr int lineAndMargin = 22;  // Points, of two pixels.
    EXPECT_EQ(pictureSize(picture).second - before, 2 * lineAndMargin);
}

TEST_F(ProgramTest, PaintsAPictureWithoutADisplay) {
    const Ended ended = run({"--simulate", "--paint", picture.string()});
    EXPECT_EQ(ended.status, 0) << ended.complaints;
    const auto [width, height] = pictureSize(picture);
    EXPECT_GE(width, 2 * 560);
    EXPECT_LE(width, 2 * 660);
    EXPECT_GE(height, 2 * 270);
    EXPECT_LE(height, 2 * 350);
}

TEST_F(ProgramTest, PicturesHeightFollowsTheNumberOfRows) {
    run({"--simulate", "--paint", picture.string()});
    const int five = pictureSize(picture).second;
    std::vector<CategoryEntry> forty;
    for (int i = 0; i < 40; ++i)
        forty.push_back({"app:" + std::to_string(i), "Row"});
    files.writeCategories(forty);
    run({"--simulate", "--paint", picture.string()});
    EXPECT_EQ(pictureSize(picture).second - five, 2 * 35 * 50);
}

TEST_F(ProgramTest, PictureThatCannotBeWrittenIsAFailure) {
    const Ended ended = run({"--simulate", "--paint", "/nowhere/picture.png"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_TRUE(contains(ended.complaints, "/nowhere/picture.png"));
}

TEST_F(ProgramTest, WithoutADisplayItPrintsTheRowsAndSaysWhereThePictureIs) {
    const Ended ended = run({"--simulate"});
    EXPECT_EQ(ended.status, 0) << ended.complaints;
    EXPECT_TRUE(contains(ended.complaints, "display"));
    EXPECT_TRUE(contains(ended.output, "Ringtone: 50%")) << ended.output;
    EXPECT_FALSE(contains(ended.output, "] 50%")) << "a second time: " << ended.output;
    const std::filesystem::path written = cache / "tarnwick" / "widget.png";
    EXPECT_TRUE(contains(ended.output, written.string())) << ended.output;
    EXPECT_GT(pictureSize(written).first, 0);
}

TEST_F(ProgramTest, WithoutAPlaceForAPictureItPrintsTheRowsAllTheSame) {
    for (const char* nowhere : {"/proc/nowhere", "/dev/null"}) {
        const Ended ended = runProgram(
            {"--simulate", "--model", "iPad4,1"},
            {{"HOME", nowhere}, {"XDG_CACHE_HOME", nowhere}, {"XDG_CONFIG_HOME", nowhere}});
        EXPECT_EQ(ended.status, 0);
        EXPECT_TRUE(contains(ended.output, "Ringtone: 50%")) << ended.output;
        EXPECT_FALSE(contains(ended.output, "picture")) << ended.output;
        EXPECT_TRUE(contains(ended.complaints, "cannot write")) << ended.complaints;
    }
}

TEST_F(ProgramTest, WithoutADisplayNothingCanWaitInTheBackground) {
    for (const char* option : {"--background", "--service"}) {
        const Ended ended = run({option});
        EXPECT_EQ(ended.status, 1);
        EXPECT_EQ(ended.output, "");
        EXPECT_EQ(ended.complaints, "tarnwick: there is no display\n");
    }
}

TEST_F(ProgramTest, WithoutADisplayAnEmptyListSaysWhereItIs) {
    files.writeCategories({});
    const Ended ended = run({"--simulate"});
    EXPECT_EQ(ended.status, 0);
    EXPECT_TRUE(contains(ended.output, "No categories to show")) << ended.output;
    EXPECT_TRUE(contains(ended.output, files.categoryFile().filename().string())) << ended.output;
    EXPECT_TRUE(contains(ended.output, files.folder().string())) << ended.output;
}

TEST_F(ProgramTest, WithoutASoundServerTheRowsAreUnknownAndNothingIsSimulated) {
    const Ended ended = run({});
    EXPECT_EQ(ended.status, 0) << ended.complaints;
    EXPECT_TRUE(contains(ended.output, "Ringtone: unknown")) << ended.output;
    EXPECT_TRUE(contains(ended.complaints, "tarnwick: no sound server answers\n"))
        << ended.complaints;
}

TEST_F(ProgramTest, WithoutADisplayACaptionOfAnyBytesIsOneLine) {
    files.writeCategories({{"Ringtone", "two\nlines \xE2\x80\xAE \xD8\xB1\xD9\x86"}});
    const Ended ended = run({"--simulate"});
    EXPECT_EQ(ended.status, 0);
    EXPECT_TRUE(contains(ended.output, "two lines \uFFFD \u0631\u0646")) << ended.output;
}

TEST_F(ProgramTest, MisuseIsRepeatedWithoutWhatActsOnATerminal) {
    const Ended ended = run({"--\x1b[31m\u202E\xff"});
    EXPECT_EQ(ended.status, 2);
    EXPECT_TRUE(contains(ended.complaints, "'--\uFFFD[31m\uFFFD\uFFFD'\nTry 'tarnwick --help'"))
        << ended.complaints;
}

TEST_F(ProgramTest, WithoutADisplayItPrintsThePercentagesThatTheCaptionsLeaveAway) {
    files.writeSettings("<key>displayPercentage</key><false/>");
    const Ended ended = run({"--simulate"});
    EXPECT_FALSE(contains(ended.output, "Ringtone: 50%")) << ended.output;
    EXPECT_TRUE(contains(ended.output, "[##########----------] 50%")) << ended.output;
}

TEST_F(ProgramTest, WithoutADisplayItPrintsNoPercentageThatIsNotKnown) {
    files.writeCategories({{"Nobody", "Nobody's"}});
    const Ended ended = run({"--simulate"});
    EXPECT_TRUE(contains(ended.output, "Nobody's: unknown")) << ended.output;
    EXPECT_FALSE(contains(ended.output, "0%")) << ended.output;
}

TEST_F(ProgramTest, GoesOnWhenItsComplaintsHaveNoReader) {
    const Ended ended =
        runProgram({"--simulate", "--preferences", files.folder().string()},
                   {{"XDG_CACHE_HOME", cache.string()}}, RunningProgram::Error::WithoutReader);
    EXPECT_EQ(ended.status, 0);
    EXPECT_TRUE(contains(ended.output, "Ringtone")) << ended.output;
}

TEST_F(ProgramTest, EndsInGoodOrderWhenItIsToldToEnd) {
    const XServer display;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        const Ended ended = runProgramUntilSignal(
            {"--simulate", "--preferences", files.folder().string()},
            {{"DISPLAY", display.displayName()}, {"GDK_BACKEND", "x11"}}, signal);
        EXPECT_EQ(ended.status, 0) << ended.complaints;
        EXPECT_TRUE(contains(ended.complaints, "TW: dealloc")) << ended.complaints;
    }
}

/// What the loader writes of the libraries of a program: "files" are those that it loads, "libs"
/// where it looks for them.
class LoaderRecord {
 public:
    LoaderRecord(std::filesystem::path folder, const char* kind)
        : folder_(std::move(folder)), kind_(kind) {
        std::filesystem::create_directory(folder_);
    }

    /// What a program's environment has to say for it.
    Environment variables() const {
        return {{"LD_DEBUG", kind_}, {"LD_DEBUG_OUTPUT", folder_ / "record"}};
    }
    std::string text() const {
        std::string text;
        for (const auto& file : std::filesystem::directory_iterator(folder_)) {
            std::ifstream stream(file.path());
            text.append(std::istreambuf_iterator<char>(stream), {});
        }
        return text;
    }

 private:
    std::filesystem::path folder_;
    const char* kind_;
};

// GDK starts the graphics driver to look at the display's visuals, unless another program has left
// the answer there.
TEST_F(ProgramTest, FirstOnADisplayItLoadsNoGraphicsDriver) {
    const XServer display(XServer::Glx::On);
    const LoaderRecord record(files.folder() / "loaded", "files");
    Environment variables = record.variables();
    variables["DISPLAY"] = display.displayName();
    variables["GDK_BACKEND"] = "x11";
    runProgramUntilSignal({"--simulate", "--preferences", files.folder().string()}, variables,
                          SIGTERM);
    const std::string loaded = record.text();
    EXPECT_TRUE(contains(loaded, "libgdk-3")) << "the loader tells of nothing";
    EXPECT_FALSE(contains(loaded, "_dri.so"));
    EXPECT_FALSE(contains(loaded, "libLLVM"));
}

// Slow, and a way to have somebody else's code run.
TEST_F(ProgramTest, LooksForNoLibraryInTheFolderThatItIsStartedIn) {
    const LoaderRecord record(files.folder() / "searched", "libs");
    runProgram({"--simulate", "--preferences", files.folder().string()}, record.variables());
    const std::string searched = record.text();
    const std::string attempt = "trying file=";
    std::size_t found = searched.find(attempt);
    ASSERT_NE(found, std::string::npos) << "the loader tells of nothing";
    for (; found != std::string::npos; found = searched.find(attempt, found + 1))
        EXPECT_EQ(searched[found + attempt.size()], '/') << searched.substr(found, 80);
}

TEST_F(ProgramTest, MissingBundleIsAClearFailure) {
    const Ended ended = run({"--simulate", "--bundle", "/nowhere/Tarnwick.bundle"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_TRUE(contains(ended.complaints, "/nowhere/Tarnwick.bundle")) << ended.complaints;
    EXPECT_EQ(ended.output, "");
}

TEST_F(ProgramTest, MissingBundleLeavesTheOtherOneStanding) {
    const Ended ended = run({"--simulate", "--bundle", TARNWICK_BUNDLE_DIR, "--bundle",
                             "/nowhere/Radio.bundle", "--paint", picture.string()});
    EXPECT_EQ(ended.status, 0) << ended.complaints;
    EXPECT_TRUE(contains(ended.complaints, "/nowhere/Radio.bundle")) << ended.complaints;
    const int alone = 2 * (270 + 50);  // pixels, with the shadow
    EXPECT_EQ(pictureSize(picture).second, alone + 2 * 50) << "with a line that says so";
}

TEST_F(ProgramTest, BrokenBundleIsAClearFailure) {
    const std::filesystem::path bundle = files.folder() / "Broken.bundle";
    std::filesystem::create_directory(bundle);
    MixerFiles::write(bundle / "Info.plist", "no property list");
    const Ended ended = run({"--simulate", "--bundle", bundle.string()});
    EXPECT_EQ(ended.status, 1);
    EXPECT_TRUE(contains(ended.complaints, "Broken.bundle")) << ended.complaints;
}

TEST_F(ProgramTest, BundleWhoseModuleIsNoModuleIsAClearFailure) {
    const std::filesystem::path bundle = files.folder() / "Broken.bundle";
    std::filesystem::copy(TARNWICK_BUNDLE_DIR, bundle, std::filesystem::copy_options::recursive);
    MixerFiles::write(bundle / "Tarnwick", "no module");
    const Ended ended = run({"--simulate", "--bundle", bundle.string()});
    EXPECT_EQ(ended.status, 1);
    EXPECT_TRUE(contains(ended.complaints, "Broken.bundle")) << ended.complaints;
}

}  // namespace
}  // namespace test
