#pragma once

#include "platform/foundation/NSRunLoop.hpp"

#include <pulse/operation.h>

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace pulse {

/// Cancels the operation and releases it: its callback is not called any more.
struct OperationDeleter {
    void operator()(pa_operation* operation) const {
        pa_operation_cancel(operation);
        pa_operation_unref(operation);
    }
};
using OperationPtr = std::unique_ptr<pa_operation, OperationDeleter>;

class Operations;

/// A request that waits for the server's answer. Its address is the user data of the library's
/// callback.
class PendingOperation {
 public:
    virtual ~PendingOperation() = default;

 protected:
    friend class Operations;
    explicit PendingOperation(Operations& owner) : owner_(owner) {}

    virtual void fail() = 0;

    Operations& owner_;
    OperationPtr operation_;
    int looks_ = 0;  ///< How often the watchdog has seen it pending.
};

/// A request whose answer is collected in a Result.
template <class Result>
class Query : public PendingOperation {
 public:
    /// nullopt: the server refused the request or does not know the object.
    using Done = std::function<void(std::optional<Result>)>;

    Query(Operations& owner, Done done) : PendingOperation(owner), done_(std::move(done)) {}

    Result result{};

    /// End the query and deliver the result or the failure. Destroys the query.
    void succeed();
    void fail() override;

 private:
    Done done_;
};

/// The pending requests of one connection. Destroying it cancels all of them: no answer comes
/// afterwards.
///
///     auto& query = operations.expect<DeviceMap>([](std::optional<DeviceMap> sinks) { ... });
///     pa_operation* operation = pa_context_get_sink_info_list(context, gather, &query);
///     operations.await(query, OperationPtr(operation));
///
/// The library's callback fills query.result and ends it by succeed() or fail(). Main thread.
class Operations {
 public:
    /// A server that does not answer a request for this long is considered hung. The time is
    /// counted in this many checks, so that a pause of our own main loop is not blamed on the
    /// server.
    static constexpr double deadlineSeconds = 2.0;
    static constexpr int looksUntilDeadline = 5;

    /// `hung` is called from the main run loop.
    explicit Operations(std::function<void()> hung) : hung_(std::move(hung)) {}
    Operations(const Operations&) = delete;
    Operations& operator=(const Operations&) = delete;

    /// Creates a query for an operation that is started next, with the query as its callback's user
    /// data.
    template <class Result>
    Query<Result>& expect(typename Query<Result>::Done done) {
        auto query = std::make_unique<Query<Result>>(*this, std::move(done));
        Query<Result>& expected = *query;
        pending_.push_back(std::move(query));
        return expected;
    }
    /// Gives the query its operation; nullptr if the library refused to start one. The query's
    /// `done` is never called from inside.
    void await(PendingOperation& query, OperationPtr operation);

    /// Removes a query, in order to answer it.
    std::unique_ptr<PendingOperation> take(const PendingOperation* operation);

 private:
    void failRefused();
    void watch();
    void look();

    std::function<void()> hung_;
    std::vector<std::unique_ptr<PendingOperation>> pending_;  // The oldest first.
    OneShotTimer watchdog_;
    OneShotTimer refusal_;
};

template <class Result>
void Query<Result>::succeed() {
    const auto self = owner_.take(this);
    done_(std::move(result));
}

template <class Result>
void Query<Result>::fail() {
    const auto self = owner_.take(this);
    done_(std::nullopt);
}

}  // namespace pulse
