#include "tests/control/ControlFixture.hpp"

namespace test {

ControlFixture::ControlFixture(rigs::ServerKind kind) : server_(rigs::makeServer(kind, folder_)) {
    files_.writeCategories({{"Ringtone", "Bell"},
                            {"Audio/Video", "Music"},
                            {"HeadsetBT", "BT Headset"},
                            {"HeadphonesBT", "BT Headphones"}});
}

Words ControlFixture::commandLine(const Words& arguments) const {
    Words words = {TARNWICKCTL, "--preferences", files_.folder().string(), "--server",
                   server_->address()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return words;
}

std::string ControlFixture::outputOf(const Words& arguments) const {
    const Ended ended = run(arguments);
    EXPECT_EQ(ended.status, 0) << ended.complaints;
    EXPECT_EQ(ended.complaints, "");
    return ended.output;
}

void ControlFixture::setSinkVolume(int percent) const {
    server_->pactl({"set-sink-volume", "spk", std::to_string(percent) + "%"});
}

}  // namespace test
