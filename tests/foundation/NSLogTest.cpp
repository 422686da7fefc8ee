#include "platform/foundation/NSLog.hpp"
#include "tests/foundation/TemporaryFolder.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <stdexcept>
#include <vector>

namespace {

/// The line that a sink gets.
std::string logged(const std::string& text) {
    std::string line;
    setLogSink([&](const std::string& received) { line = received; });
    NSLog(text);
    setLogSink({});
    return line;
}

TEST(Log, GivesTheLineToTheSink) {
    EXPECT_EQ(logged("TW: viewHeight"), "TW: viewHeight");
    EXPECT_EQ(logged(""), "");
    EXPECT_EQ(logged("%s %n %d"), "%s %n %d");
    EXPECT_EQ(logged(" Média \U0001F600 "), " Média \U0001F600 ");
}

TEST(Log, KeepsALineOneLine) {
    EXPECT_EQ(logged("a\nb\r\nc"), "a b  c");
    EXPECT_EQ(logged("a\u0085b\u2028c\u2029d\te"), "a b c d e");
}

TEST(Log, GetsNothingThatActsOnWhatShowsIt) {
    EXPECT_EQ(logged(std::string("a\0b\x1B[31m\x7F", 9)), "a\uFFFDb\uFFFD[31m\uFFFD");
    EXPECT_EQ(logged("a\u009Bb\u202Ec\u2066d"), "a\uFFFDb\uFFFDc\uFFFDd");
    EXPECT_EQ(logged("a\xFF\xC2"), "a\uFFFD\uFFFD");
    EXPECT_EQ(logged("\u00A0\u2027\u200F"), "\u00A0\u2027\u200F");
}

TEST(Log, TakesALineFromInsideItsSink) {
    std::vector<std::string> lines;
    setLogSink([&](const std::string& line) {
        lines.push_back(line);
        if (line == "outer") NSLog("inner");
    });
    NSLog("outer");
    setLogSink({});
    EXPECT_EQ(lines, (std::vector<std::string>{"outer", "inner"}));
}

TEST(Log, LetsASinkReplaceItself) {
    int calls = 0;
    std::string held = "still here";
    setLogSink([&calls, held](const std::string&) {
        setLogSink([&calls](const std::string&) { calls += 10; });
        calls += held == "still here" ? 1 : 100;
    });
    NSLog("a");
    NSLog("b");
    setLogSink({});
    EXPECT_EQ(calls, 11);
}

/// Sends standard error to a file for as long as this lives.
class CapturedStandardError {
 public:
    explicit CapturedStandardError(const std::string& path) : saved_(dup(STDERR_FILENO)) {
        const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
        dup2(file, STDERR_FILENO);
        close(file);
    }
    ~CapturedStandardError() {
        dup2(saved_, STDERR_FILENO);
        close(saved_);
    }
    CapturedStandardError(const CapturedStandardError&) = delete;
    CapturedStandardError& operator=(const CapturedStandardError&) = delete;

 private:
    int saved_;
};

TEST(Log, WritesOneLineToStandardError) {
    const TemporaryFolder folder;
    {
        const CapturedStandardError captured(folder / "err");
        NSLog("first\nline");
        NSLog("%s");
    }
    EXPECT_EQ(folder.read("err"), "first line\n%s\n");
}

TEST(Complaint, IsALineOnStandardErrorOfWhatCanBeShown) {
    const TemporaryFolder folder;
    {
        const CapturedStandardError captured(folder / "err");
        complain("mixer", "cannot write 'a\nb\x1B[31m\u202E%s\xFF'");
    }
    EXPECT_EQ(folder.read("err"), "mixer: cannot write 'a b\uFFFD[31m\uFFFD%s\uFFFD'\n");
}

TEST(Debugging, IsSaidForTheTopicsThatTheEnvironmentNames) {
    const TemporaryFolder folder;
    const auto saidWith = [&](const char* topics) {
        const ScopedVariable variable("TARNWICK_DEBUG", topics);
        const CapturedStandardError captured(folder / "err");
        debug("sound", "con\nnected");
    };
    for (const char* topics : {"sound", "rows,sound", "sound,rows", ",,sound,"}) {
        saidWith(topics);
        EXPECT_EQ(folder.read("err"), "sound: con nected\n") << topics;
        std::filesystem::remove(folder / "err");
    }
    for (const char* topics : {"", "rows", "sounds", "soun", ",", "Sound"}) {
        saidWith(topics);
        EXPECT_EQ(folder.read("err"), "") << topics;
        std::filesystem::remove(folder / "err");
    }
}

TEST(Log, WritesTheLineOnceWhenStandardErrorIsTheJournal) {
    const TemporaryFolder folder;
    folder.write("err", "");
    struct stat status {};
    ASSERT_EQ(stat((folder / "err").c_str(), &status), 0);
    const std::string stream = std::to_string(status.st_dev) + ":" + std::to_string(status.st_ino);
    const ScopedVariable journal("JOURNAL_STREAM", stream.c_str());
    {
        const CapturedStandardError captured(folder / "err");
        NSLog("line");
    }
    EXPECT_EQ(folder.read("err"), "line\n");
}

TEST(Log, SurvivesAStandardErrorThatTakesNothing) {
    const CapturedStandardError captured("/dev/full");
    NSLog("line");
    NSLog(std::string(100000, 'x'));
}

}  // namespace
