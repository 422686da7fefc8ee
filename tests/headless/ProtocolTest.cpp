#include "tests/support/HeadlessFixture.hpp"

namespace test {
namespace {

class Protocol : public HeadlessFixture {
 protected:
    void SetUp() override { start(); }
};

TEST_F(Protocol, AnswersOneResultAfterTheEvents) {
    EXPECT_TRUE(send("create").isOk());
    const Reply reply = send("call view");
    EXPECT_TRUE(reply.isOk());
    EXPECT_FALSE(reply.events.empty());
    for (const Json& event : reply.events)
        EXPECT_TRUE(event.contains("event")) << event;
}

TEST_F(Protocol, GoesOnAfterALineThatIsNoCommand) {
    for (const char* line : {"dance", "", "   ", "\t\r", "Tree", "tree\"", "\"tree", "\"\"", "#",
                             "{}", "call\xff view", "\x01"}) {
        const Reply reply = send(line);
        EXPECT_FALSE(reply.isOk()) << line;
        EXPECT_NE(reply.error(), "") << line;
        EXPECT_TRUE(reply.events.empty()) << line;
    }
    EXPECT_TRUE(send("tree").isOk());
}

TEST_F(Protocol, TellsTheNameOfAnUnknownCommand) {
    EXPECT_EQ(send("dance \"\"").error(), "unknown command 'dance'");
}

TEST_F(Protocol, WritesValidJsonAboutInvalidText) {
    EXPECT_EQ(send("\xff").error(), "unknown command '\xEF\xBF\xBD'");
    EXPECT_TRUE(send("create").isOk());
    const Reply reply = send("notify \"a\xc3\x28\" 0.5");
    EXPECT_EQ(reply.happened().front(), "volume a\xEF\xBF\xBD( 0.5");
}

TEST_F(Protocol, TakesALineOfOneMebibyteAndRefusesALongerOne) {
    constexpr std::size_t longest = 1024 * 1024;
    EXPECT_TRUE(send("tree" + std::string(longest - 4, ' ')).isOk());
    const Reply reply = send("tree" + std::string(longest - 3, ' '));
    EXPECT_EQ(reply.error(), "the line is longer than 1 MiB");
    EXPECT_TRUE(send("tree").isOk());
}

TEST_F(Protocol, EndsWithSuccessAtTheEndOfInput) {
    EXPECT_EQ(program->finish(), 0);
    EXPECT_EQ(program->nextLine(), std::nullopt);
}

TEST_F(Protocol, CarriesOutALastLineWithoutItsEnd) {
    program->write("tree");
    program->closeInput();
    EXPECT_TRUE(program->readReply().isOk());
    EXPECT_EQ(program->finish(), 0);
}

TEST_F(Protocol, EndsWithSuccessAtQuitAndLeavesTheRestUndone) {
    program->write("create\ncall view\nquit\ntree\n");
    EXPECT_TRUE(program->readReply().isOk());
    EXPECT_TRUE(program->readReply().isOk());
    const Reply reply = program->readReply();
    EXPECT_EQ(reply.line.dump(), R"({"ok":true})");
    EXPECT_EQ(program->nextLine(), std::nullopt);
    EXPECT_EQ(program->finish(), 0);
    EXPECT_EQ(program->complaints(), "");
}

TEST_F(Protocol, SaysNothingMoreAfterTheLastCommand) {
    EXPECT_TRUE(send("create").isOk());
    EXPECT_TRUE(send("call view").isOk());
    EXPECT_EQ(program->finish(), 0);
    EXPECT_EQ(program->nextLine(), std::nullopt);
    EXPECT_EQ(program->complaints(), "");
}

TEST_F(Protocol, FailsWhenTheReaderOfItsOutputIsGone) {
    program->closeOutput();
    program->write("tree\n");
    EXPECT_EQ(program->finish(), 1);
    EXPECT_NE(program->complaints(), "");
}

struct Misuse {
    const char* command;
    std::vector<const char*> lines;

    friend void PrintTo(const Misuse& tested, std::ostream* out) { *out << tested.command; }
};

class MisusedCommand : public HeadlessFixture, public testing::WithParamInterface<Misuse> {};

TEST_P(MisusedCommand, AnswersItsUsageAndChangesNothing) {
    start();
    const std::string before = resultOf("tree").dump();
    for (const char* line : GetParam().lines) {
        const Reply reply = send(line);
        EXPECT_FALSE(reply.isOk()) << line;
        EXPECT_TRUE(reply.error().starts_with(std::string("usage: ") + GetParam().command))
            << line << ": " << reply.error();
        EXPECT_TRUE(reply.events.empty()) << line;
    }
    EXPECT_EQ(resultOf("tree").dump(), before);
}

INSTANTIATE_TEST_SUITE_P(
    Every, MisusedCommand,
    testing::Values(
        Misuse{"create", {"create A B"}}, Misuse{"call", {"call"}},
        Misuse{"release", {"release it"}},
        Misuse{"parent",
               {"parent", "parent wide", "parent 1 2", "parent -1", "parent 100001", "parent nan",
                "parent inf", "parent 1e999", "parent \"none\""}},
        Misuse{
            "host",
            {"host", "host invalidatePreferredViewSize", "host invalidatePreferredViewSize maybe",
             "host invalidatePreferredViewSize yes no"}},
        Misuse{"model", {"model", "model iPad 4,1"}},
        Misuse{"volume",
               {"volume", "volume Ringtone", "volume Ringtone loud", "volume Ringtone nan",
                "volume Ringtone 0.5 0.5", "volume Ringtone -"}},
        Misuse{"notify", {"notify Ringtone loud", "notify Ringtone inf", "notify - 0.5 0.5"}},
        Misuse{"readable", {"readable", "readable Ringtone", "readable Ringtone 1"}},
        Misuse{"route", {"route", "route Ringtone", "route Ringtone My Speaker"}},
        Misuse{"service", {"service", "service off", "service yes yes"}},
        Misuse{"touch",
               {"touch", "touch began", "touch began 1", "touch pressed 1 1", "touch began nan 1",
                "touch began 1 inf", "touch began 1 1 1", "touch began x y"}},
        Misuse{"scroll", {"scroll", "scroll 1 1", "scroll 1 1 up", "scroll 1 1 nan"}},
        Misuse{"key", {"key", "key Tab", "key enter", "key tab tab"}},
        Misuse{"advance", {"advance", "advance soon", "advance nan", "advance 1 2"}},
        Misuse{"wait", {"wait", "wait 10", "wait soon log", "wait nan log"}},
        Misuse{"ready", {"ready", "ready soon", "ready 1 2"}}, Misuse{"tree", {"tree x"}},
        Misuse{"paint", {"paint", "paint a b", "paint a 1 1"}}, Misuse{"quit", {"quit now"}}),
    [](const auto& tested) { return std::string(tested.param.command); });

}  // namespace
}  // namespace test
