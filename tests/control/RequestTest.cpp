#include "shells/control/Request.hpp"

#include <gtest/gtest.h>

#include <vector>

namespace control {
namespace {

class RequestTest : public testing::Test {
 protected:
    std::optional<std::string> read(const std::vector<const char*>& arguments) {
        request = Request();
        return readRequest(request, arguments);
    }
    Request request;
};

TEST_F(RequestTest, TakesOptionsWhereverTheyStand) {
    EXPECT_EQ(read({"--server", "unix:/a", "set", "--timeout=0.5", "Ringtone", "40%", "--json"}),
              std::nullopt);
    EXPECT_EQ(request.verb, Verb::Set);
    EXPECT_EQ(request.category, "Ringtone");
    EXPECT_EQ(request.server, "unix:/a");
    EXPECT_EQ(request.timeoutSeconds, 0.5);
    EXPECT_EQ(request.form, Form::Json);
}

TEST_F(RequestTest, ReadsANegativeNumberAsAStepDown) {
    EXPECT_EQ(read({"set", "Ringtone", "-5%"}), std::nullopt);
    EXPECT_EQ(request.change->fraction(), -0.05);
    EXPECT_EQ(read({"set", "Ringtone", "-.05"}), std::nullopt);
    EXPECT_TRUE(request.change->isStep());
}

TEST_F(RequestTest, TakesACategoryWithADashBehindTwoDashes) {
    EXPECT_EQ(read({"get", "--", "--json"}), std::nullopt);
    EXPECT_EQ(request.category, "--json");
    EXPECT_EQ(request.form, Form::Text);
}

TEST_F(RequestTest, NeedsNoCommandForAQuestion) {
    EXPECT_EQ(read({"--help"}), std::nullopt);
    EXPECT_TRUE(request.common.help);
    EXPECT_EQ(read({"-h"}), std::nullopt);
    EXPECT_TRUE(request.common.help);
    EXPECT_EQ(read({"--version"}), std::nullopt);
}

TEST_F(RequestTest, TakesTimesBetweenNothingAndAnHour) {
    for (const std::string option : {"--timeout", "--wait"}) {
        for (const char* seconds : {"0", "3600", "1e-3"})
            EXPECT_EQ(read({option.c_str(), seconds, "list"}), std::nullopt) << seconds;
        for (const char* seconds : {"", "-1", "3600.5", "nan", "inf", "2s", "soon", "1e999"})
            EXPECT_EQ(read({option.c_str(), seconds, "list"}),
                      option + ": SECONDS is a number from 0 to 3600")
                << seconds;
    }
}

TEST_F(RequestTest, WaitsForNoServerUnlessTold) {
    EXPECT_EQ(read({"list"}), std::nullopt);
    EXPECT_EQ(request.waitSeconds, 0);
    EXPECT_EQ(read({"--wait", "60", "list"}), std::nullopt);
    EXPECT_EQ(request.waitSeconds, 60);
}

TEST_F(RequestTest, TakesAnActionForTheOutputs) {
    EXPECT_EQ(read({"outputs", "on", "--permanent"}), std::nullopt);
    EXPECT_EQ(request.verb, Verb::Outputs);
    EXPECT_EQ(request.outputs, OutputsAction::On);
    EXPECT_TRUE(request.isPermanent);
    EXPECT_EQ(read({"outputs", "adopt"}), std::nullopt);
    EXPECT_EQ(request.outputs, OutputsAction::Adopt);
    EXPECT_EQ(read({"outputs"}), "usage: tarnwickctl outputs on|off|status|adopt");
    EXPECT_EQ(read({"outputs", "up"}), "usage: tarnwickctl outputs on|off|status|adopt");
    EXPECT_EQ(read({"outputs", "off", "--permanent"}), "--permanent goes with outputs on alone");
}

TEST_F(RequestTest, SaysWhatDoesNotFit) {
    EXPECT_EQ(read({}), "no command was given");
    EXPECT_EQ(read({"dance"}), "unknown command 'dance'");
    EXPECT_EQ(read({"List"}), "unknown command 'List'");
    EXPECT_EQ(read({"list", "all"}), "usage: tarnwickctl list");
    EXPECT_EQ(read({"get"}), "usage: tarnwickctl get CATEGORY");
    EXPECT_EQ(read({"get", "a", "b"}), "usage: tarnwickctl get CATEGORY");
    EXPECT_EQ(read({"set", "a"}), "usage: tarnwickctl set CATEGORY VOLUME");
    EXPECT_EQ(read({"set", "a", "1%", "2%"}), "usage: tarnwickctl set CATEGORY VOLUME");
    EXPECT_EQ(read({"watch", "a"}), "usage: tarnwickctl watch");
    EXPECT_EQ(read({"list", "--changes-only"}), "--changes-only goes with watch alone");
    EXPECT_EQ(read({"--bundle", "b", "list"}), "unknown argument '--bundle'");
    EXPECT_EQ(read({"-H"}), "unknown argument '-H'");
    EXPECT_EQ(read({"-h=yes"}), "-h takes no value");
    EXPECT_EQ(read({"--server=", "list"}), "--server: the value is empty");
    EXPECT_EQ(read({"set", "a", "40"}),
              "'40' is no volume: give 40%, 0.4, or a step such as +5% or -5%");
}

}  // namespace
}  // namespace control
