#include "backends/pulse/outputs/OutputsJournal.hpp"
#include "tests/rigs/ServerFolder.hpp"

#include <gtest/gtest.h>

#include <fstream>

using namespace pulse;

/// With a state folder of the test's own.
class OutputsFileTest : public testing::Test {
 protected:
    void write(const std::string& text) { folder.write("state/tarnwick/outputs", text); }

    rigs::ServerFolder folder;
    OutputsFile file;
};

TEST_F(OutputsFileTest, ReadsBackWhatWasWritten) {
    OutputsJournal journal{OutputsJournal::Choice::Apart, OutputsJournal::Phase::GoingUp, "spk"};
    journal.kept["call"] = {{2, {1234, 65536}}, Mute::On};
    ASSERT_EQ(file.lock(), FileLock::State::Ours);
    ASSERT_EQ(file.write(journal), std::nullopt);
    const OutputsJournal read = file.read();
    EXPECT_EQ(read.choice, journal.choice);
    EXPECT_EQ(read.phase, journal.phase);
    EXPECT_EQ(read.real, "spk");
    ASSERT_EQ(read.kept.size(), 1U);
    EXPECT_TRUE(pa_cvolume_equal(&read.kept.at("call").volume, &journal.kept.at("call").volume));
    EXPECT_EQ(read.kept.at("call").mute, Mute::On);
}

TEST_F(OutputsFileTest, HasTheDefaultForWhatIsMissingOrMalformed) {
    EXPECT_EQ(file.read().choice, OutputsJournal::Choice::Undecided);
    std::string many = "[kept]\ncall=0";
    for (int i = 0; i < 40; ++i)
        many += ";65536";
    for (const std::string& text :
         {std::string("no key file"), std::string("[outputs]\nchoice=maybe\nphase=\n"),
          std::string("[kept]\ncall=1;x\nalarm=0;-5\nmultimedia=0\n"), many,
          std::string("[outputs]\nchoice=\xff\xfe\n"), std::string(1 << 20, 'x')}) {
        write(text);
        const OutputsJournal read = file.read();
        EXPECT_EQ(read.choice, OutputsJournal::Choice::Undecided);
        EXPECT_EQ(read.phase, OutputsJournal::Phase::Down);
        EXPECT_TRUE(read.kept.empty());
    }
}

TEST_F(OutputsFileTest, IsLockedByOneProcessAtATime) {
    OutputsFile other;
    ASSERT_EQ(file.lock(), FileLock::State::Ours);
    EXPECT_EQ(other.lock(), FileLock::State::Taken);
    file.unlock();
    EXPECT_EQ(other.lock(), FileLock::State::Ours);
}

TEST_F(OutputsFileTest, SaysWhyItCannotBeWritten) {
    folder.write("state/tarnwick", "a file where the folder belongs");
    EXPECT_EQ(file.lock(), FileLock::State::Unknown);
    EXPECT_NE(file.write({}), std::nullopt);
}
