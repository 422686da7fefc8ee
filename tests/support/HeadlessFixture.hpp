#pragma once

#include "tests/support/HeadlessProcess.hpp"
#include "tests/support/MixerFiles.hpp"

#include <gtest/gtest.h>

#include <optional>

namespace test {

using Happened = std::vector<std::string>;

/// Starts the program with a preferences folder of its own; a telephone unless told otherwise.
class HeadlessFixture : public testing::Test {
 protected:
    static constexpr const char* visible = "post org.tarnwick.mixer.isvisible";
    static constexpr const char* hidden = "post org.tarnwick.mixer.ishidden";

    HeadlessProcess& start(std::vector<std::string> arguments = {}) {
        arguments.insert(arguments.begin(),
                         {"--preferences", files.folder().string(), "--model", "iPhone6,1"});
        return program.emplace(arguments);
    }
    Reply send(std::string_view command) {
        Reply reply = program->send(command);
        for (std::string& each : reply.happened())
            allHappened.push_back(std::move(each));
        return reply;
    }
    /// Sends a command that is to succeed and answers its events as short texts.
    Happened expectOk(std::string_view command) {
        const Reply reply = send(command);
        EXPECT_TRUE(reply.isOk()) << command << ": " << reply.error();
        return reply.happened();
    }
    /// Sends a command that is to succeed and answers its result.
    Json resultOf(std::string_view command) {
        const Reply reply = send(command);
        EXPECT_TRUE(reply.isOk()) << command << ": " << reply.error();
        return reply.line.value("result", Json(nullptr));
    }
    /// The first view of the tree, in document order, with that tag; null when there is none.
    Json viewWithTag(int tag) { return find(resultOf("tree"), tag); }

    MixerFiles files;
    std::optional<HeadlessProcess> program;
    Happened allHappened;  ///< With any command since it was last cleared.

 private:
    static Json find(const Json& view, int tag) {
        if (view.at("tag") == tag) return view;
        for (const Json& subview : view.at("subviews"))
            if (Json found = find(subview, tag); !found.is_null()) return found;
        return nullptr;
    }
};

}  // namespace test
