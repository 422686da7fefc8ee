#include "backends/glib/GLibRunLoop.hpp"
#include "platform/foundation/NSLog.hpp"
#include "platform/foundation/NSRunLoop.hpp"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

namespace {

struct ContextEnd {
    void operator()(GMainContext* context) const { g_main_context_unref(context); }
};
using Context = std::unique_ptr<GMainContext, ContextEnd>;

NSRunLoop& loop() {
    return NSRunLoop::mainRunLoop();
}

class GLibRunLoopTest : public testing::Test {
 protected:
    /// Lets the context wait until it wakes; answers whether it then had something to do.
    bool turn() { return g_main_context_iteration(context.get(), TRUE) != FALSE; }
    bool hasSomethingToDo() { return g_main_context_pending(context.get()) != FALSE; }

    /// How long the context would sleep, in milliseconds; -1 for ever.
    int sleepTime() {
        int priority = 0;
        g_main_context_acquire(context.get());
        g_main_context_prepare(context.get(), &priority);
        GPollFD descriptors[8];
        int timeout = 0;
        g_main_context_query(context.get(), priority, &timeout, descriptors, 8);
        g_main_context_release(context.get());
        return timeout;
    }

    Context context{g_main_context_new()};
    std::vector<int> calls;
};

TEST_F(GLibRunLoopTest, SleepsForEverWhenNothingIsWaiting) {
    const glib::GLibRunLoop runLoop(context.get());
    EXPECT_EQ(sleepTime(), -1);
    EXPECT_FALSE(hasSomethingToDo());
}

TEST_F(GLibRunLoopTest, CallsWhatIsDueAtOnce) {
    const glib::GLibRunLoop runLoop(context.get());
    loop().performAfterDelay(0, [this] { calls.push_back(1); });
    EXPECT_EQ(calls, std::vector<int>{});
    EXPECT_TRUE(turn());
    EXPECT_EQ(calls, std::vector<int>{1});
    EXPECT_EQ(sleepTime(), -1);
}

TEST_F(GLibRunLoopTest, LogsACallThatThrowsAndGoesOnWithTheNext) {
    std::vector<std::string> lines;
    setLogSink([&lines](const std::string& line) { lines.push_back(line); });
    const glib::GLibRunLoop runLoop(context.get());
    loop().performAfterDelay(0, [] { throw std::out_of_range("no such row"); });
    loop().performAfterDelay(0, [this] { calls.push_back(1); });
    EXPECT_TRUE(turn());
    EXPECT_TRUE(turn());
    setLogSink({});
    EXPECT_EQ(calls, std::vector<int>{1});
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_TRUE(lines[0].ends_with("no such row")) << lines[0];
    EXPECT_EQ(sleepTime(), -1);
}

TEST_F(GLibRunLoopTest, CallsWhatWasWaitingBeforeItCame) {
    loop().performAfterDelay(0, [this] { calls.push_back(1); });
    const glib::GLibRunLoop runLoop(context.get());
    EXPECT_TRUE(turn());
    EXPECT_EQ(calls, std::vector<int>{1});
}

TEST_F(GLibRunLoopTest, SleepsUntilTheNextCallIsDue) {
    const glib::GLibRunLoop runLoop(context.get());
    loop().performAfterDelay(3600, [] {});
    EXPECT_GT(sleepTime(), 3500 * 1000);
    EXPECT_LE(sleepTime(), 3600 * 1000 + 1);
    loop().performAfterDelay(60, [] {});
    EXPECT_LE(sleepTime(), 60 * 1000 + 1);
    loop().setClock([now = loop().currentTime() + 4000] { return now; });
    loop().runDue();
    loop().setClock({});
}

TEST_F(GLibRunLoopTest, WakesForALaterCallAfterAnEarlierOne) {
    const glib::GLibRunLoop runLoop(context.get());
    loop().performAfterDelay(0.002, [this] { calls.push_back(2); });
    loop().performAfterDelay(0, [this] { calls.push_back(1); });
    while (calls.size() < 2)
        turn();
    EXPECT_EQ(calls, (std::vector<int>{1, 2}));
}

TEST_F(GLibRunLoopTest, LeavesTheContextAloneAfterItsEnd) {
    { const glib::GLibRunLoop runLoop(context.get()); }
    loop().performAfterDelay(0, [this] { calls.push_back(1); });
    EXPECT_FALSE(hasSomethingToDo());
    loop().runDue();
    EXPECT_EQ(calls, std::vector<int>{1});
}

}  // namespace
