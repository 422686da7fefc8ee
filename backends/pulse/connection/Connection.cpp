#include "backends/pulse/connection/Connection.hpp"

#include "platform/foundation/NSLog.hpp"

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <string>
#include <utility>

namespace pulse {

namespace {

// A hung server accepts connections but does not answer.
constexpr double attemptDeadlineSeconds = 2.0;

}  // namespace

void ConnectionMachine::attempt() {
    state_ = ConnectionState::Connecting;
}

bool ConnectionMachine::becameReady() {
    if (state_ != ConnectionState::Connecting) return false;
    state_ = ConnectionState::Ready;
    retryDelaySeconds_ = firstRetryDelaySeconds;
    return true;
}

bool ConnectionMachine::failed() {
    const bool alive = state_ == ConnectionState::Connecting || state_ == ConnectionState::Ready;
    if (!alive) return false;
    state_ = ConnectionState::Lost;
    return true;
}

double ConnectionMachine::waitForRetry() {
    state_ = ConnectionState::Retrying;
    const double delay = retryDelaySeconds_;
    retryDelaySeconds_ = std::min(2 * delay, longestRetryDelaySeconds);
    return delay;
}

bool ConnectionMachine::serverAppeared() {
    retryDelaySeconds_ = firstRetryDelaySeconds;
    return state_ == ConnectionState::Retrying;
}

Connection::Connection(NSString server, const char* applicationName, Handlers handlers)
    : server_(std::move(server)),
      applicationName_(applicationName),
      handlers_(std::move(handlers)),
      loop_(pa_glib_mainloop_new(nullptr)) {
    attempt();
}

PulseContext* Connection::context() {
    return machine_.state() == ConnectionState::Ready ? context_.get() : nullptr;
}

void Connection::attempt() {
    machine_.attempt();
    refusal_.reset();
    timer_.start(attemptDeadlineSeconds, [this] { failed(std::nullopt); });
    context_ = std::make_unique<PulseContext>(pa_glib_mainloop_get_api(loop_.get()), server_,
                                              applicationName_,
                                              PulseContext::Handlers{
                                                  [this] { becameReady(); },
                                                  [this] { failed(reason()); },
                                                  handlers_.changed,
                                              });
}

void Connection::becameReady() {
    if (!machine_.becameReady()) return;
    timer_.cancel();
    socketWatch_.reset();
    debuggedFailure_.clear();
    debug("sound", "connected to " + context_->address());
    handlers_.ready(*context_);
}

void Connection::failed(const NSString& refusal) {
    const bool wasReady = machine_.state() == ConnectionState::Ready;
    if (!machine_.failed()) return;
    debugFailure(wasReady ? "lost the server" : "cannot connect", refusal);
    refusal_ = refusal;
    handlers_.lost();
    context_.reset();
    timer_.start(machine_.waitForRetry(), [this] { attempt(); });
    watchForServer();
}

// Attempts repeat every few seconds: log a failure only when it differs from the last one.
void Connection::debugFailure(const std::string& what, const NSString& refusal) {
    const bool isHung = !refusal || context_->isHung();
    const std::string failure = what + ": " + (isHung ? "it does not answer in time" : *refusal);
    if (std::exchange(debuggedFailure_, failure) != failure) debug("sound", failure);
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

namespace {

NSString environment(const char* name) {
    const char* value = std::getenv(name);
    return value && *value ? NSString(value) : std::nullopt;
}

// "{machine}unix:/path" or "/path"; other addresses lead to other machines.
std::optional<std::filesystem::path> socketIn(std::string address) {
    if (address.starts_with('{')) address.erase(0, address.find('}') + 1);
    static const std::string scheme = "unix:";
    if (address.starts_with(scheme)) address.erase(0, scheme.size());
    if (!address.starts_with('/')) return std::nullopt;
    return address;
}

std::optional<std::filesystem::path> sessionSocket() {
    if (const NSString folder = environment("PULSE_RUNTIME_PATH"))
        return std::filesystem::path(*folder) / "native";
    if (const NSString folder = environment("XDG_RUNTIME_DIR"))
        return std::filesystem::path(*folder) / "pulse" / "native";
    return std::nullopt;
}

}  // namespace

std::optional<std::filesystem::path> serverSocket(const NSString& server) {
    const NSString addresses = server ? server : environment("PULSE_SERVER");
    if (!addresses) return sessionSocket();
    std::istringstream words(*addresses);
    for (std::string address; words >> address;)
        if (auto socket = socketIn(address)) return socket;
    return std::nullopt;
}

}  // namespace pulse
