#pragma once

#include "tests/rigs/FakeCard.hpp"

#include <filesystem>

namespace rigs {

/// PulseAudio's own module for sound cards, on a control device that is a file.
class FakeAlsaCard : public FakeCard {
 public:
    explicit FakeAlsaCard(SoundServer& server);
    void insert() override;
    void plug(Plug plug) override;
    void unplug(Plug plug) override;

 private:
    void chooseProfile(const std::string& profile) const;
    void setJack(Plug plug, int value) const;

    std::filesystem::path state_;
};

}  // namespace rigs
