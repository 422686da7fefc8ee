#include "backends/pulse/Connection.hpp"

#include "backends/pulse/ServerSocket.hpp"

#include <utility>

namespace pulse {
namespace {
// A server that hangs accepts connections and then says nothing.
constexpr double attemptDeadlineSeconds = 2.0;
}  // namespace

Connection::Connection(NSString server, Handlers handlers)
    : server_(std::move(server)),
      handlers_(std::move(handlers)),
      loop_(pa_glib_mainloop_new(nullptr)) {
    attempt();
}

PulseContext* Connection::context() {
    return machine_.state() == ConnectionState::Ready ? context_.get() : nullptr;
}

void Connection::attempt() {
    const std::uint64_t generation = machine_.attempt();
    refusal_.reset();
    timer_.start(attemptDeadlineSeconds, [this, generation] { failed(generation, std::nullopt); });
    context_ =
        std::make_unique<PulseContext>(pa_glib_mainloop_get_api(loop_.get()), server_,
                                       PulseContext::Handlers{
                                           [this, generation] { becameReady(generation); },
                                           [this, generation] { failed(generation, reason()); },
                                           handlers_.changed,
                                       });
}

void Connection::becameReady(std::uint64_t generation) {
    if (!machine_.becameReady(generation)) return;
    timer_.cancel();
    socketWatch_.reset();
    handlers_.ready(*context_);
}

void Connection::failed(std::uint64_t generation, const NSString& refusal) {
    if (!machine_.failed(generation)) return;
    refusal_ = refusal;
    handlers_.lost();
    context_.reset();
    timer_.start(machine_.waitForRetry(), [this] { attempt(); });
    watchForServer();
}

std::string Connection::reason() const {
    const auto socket = serverSocket(server_);
    std::error_code error;
    if (socket && !std::filesystem::exists(*socket, error) && !error)
        return "there is no " + socket->string();
    return context_->reason();
}

void Connection::watchForServer() {
    if (socketWatch_) return;
    const auto socket = serverSocket(server_);
    if (socket) socketWatch_.emplace(*socket, [this] { serverAppeared(); });
}

void Connection::serverAppeared() {
    if (machine_.serverAppeared()) attempt();
}

}  // namespace pulse
