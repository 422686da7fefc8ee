#pragma once

#include "platform/celestial/RoleOutputs.hpp"

#include <optional>

namespace test {

/// Outputs for roles that are in the state that a test sets, and remember what was asked of them. A
/// choice is under way until the test settles it.
class FakeRoleOutputs : public RoleOutputs {
 public:
    State state() const override { return now; }
    NSString failure() const override {
        return now == State::Unsettled ? NSString("the server does not load the output for alarms")
                                       : std::nullopt;
    }
    std::vector<Output> outputs() const override { return {}; }
    std::vector<Stray> strays() const override { return {}; }
    bool isOffered() const override { return follows && undecided && now == State::Shared; }
    void follow() override {
        follows = true;
        tellChange();
    }
    void choose(Choice choice) override {
        chosen = choice;
        undecided = false;
        settle(State::Changing);
    }
    NSString makePermanent() override { return std::nullopt; }
    bool isPermanent() const override { return false; }
    void decline() override {
        declined = true;
        undecided = false;
        tellChange();
    }
    void adopt() override {}
    bool isBusy() const override { return now == State::Changing; }

    /// The server comes to that state.
    void settle(State state) {
        now = state;
        tellChange();
    }

    State now = State::Shared;
    bool follows = false;
    bool undecided = true;
    bool declined = false;
    std::optional<Choice> chosen;
};

}  // namespace test
