#pragma once

#include "platform/foundation/OneShotTimer.hpp"

#include <pulse/operation.h>

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace pulse {

/// Withdraws the operation, so that its callback never comes, and lets go of it.
struct OperationDeleter {
    void operator()(pa_operation* operation) const {
        pa_operation_cancel(operation);
        pa_operation_unref(operation);
    }
};
using OperationPtr = std::unique_ptr<pa_operation, OperationDeleter>;

class Operations;

/// A question to the server that waits for its answer. Its address is the callback's user data.
class PendingOperation {
 public:
    virtual ~PendingOperation() = default;

 protected:
    friend class Operations;
    explicit PendingOperation(Operations& owner) : owner_(owner) {}

    virtual void fail() = 0;

    Operations& owner_;
    OperationPtr operation_;
    int looks_ = 0;  ///< Of the watchdog.
};

/// One that gathers a Result.
template <class Result>
class Query : public PendingOperation {
 public:
    /// nullopt: the server refused, or knows nothing of what was asked for.
    using Done = std::function<void(std::optional<Result>)>;

    Query(Operations& owner, Done done) : PendingOperation(owner), done_(std::move(done)) {}

    Result result{};

    /// End the query and hand over the result, or the failure. Nothing may follow.
    void succeed();
    void fail() override;

 private:
    Done done_;
};

/// The questions under way on one connection. Destroying it withdraws them all: no answer comes
/// after that.
class Operations {
 public:
    /// A server that leaves a question open for so long hangs. The time is counted by looking so
    /// often, so that a pause of our own main loop is not taken for the server's.
    static constexpr double deadlineSeconds = 2.0;
    static constexpr int looksUntilDeadline = 5;

    /// `hung` is called from the main run loop.
    explicit Operations(std::function<void()> hung) : hung_(std::move(hung)) {}
    Operations(const Operations&) = delete;
    Operations& operator=(const Operations&) = delete;

    /// Asks: `begin` starts the operation with the query as its callback's user data. `done` never
    /// comes from inside this call.
    template <class Result, class Begin>
    void start(typename Query<Result>::Done done, const Begin& begin) {
        auto query = std::make_unique<Query<Result>>(*this, std::move(done));
        Query<Result>* userdata = query.get();
        pending_.push_back(std::move(query));
        await(*userdata, OperationPtr(begin(userdata)));
    }

    /// Takes a query out, for its answer.
    std::unique_ptr<PendingOperation> take(const PendingOperation* operation);

 private:
    void await(PendingOperation& query, OperationPtr operation);
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
