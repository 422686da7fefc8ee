#include "shells/phosh/LockSession.hpp"

#include <glib.h>

#include <utility>

namespace {

// Milliseconds: what a local server that is busy needs at most.
constexpr guint arrivalTime = 500;

std::weak_ptr<LockSession>& current() {
    static std::weak_ptr<LockSession> session;
    return session;
}

}  // namespace

std::shared_ptr<LockSession> LockSession::shared(const std::string& soundModule) {
    std::shared_ptr<LockSession> session = current().lock();
    if (!session) session = std::make_shared<LockSession>(soundModule);
    current() = session;
    return session;
}

void LockSession::release(std::shared_ptr<LockSession> session) {
    if (!session || !session->isWriting()) return;
    using Held = std::shared_ptr<LockSession>;
    const auto wait = +[](gpointer) -> gboolean { return G_SOURCE_REMOVE; };
    const auto end = +[](gpointer held) { std::unique_ptr<Held>(static_cast<Held*>(held)); };
    g_timeout_add_full(G_PRIORITY_DEFAULT, arrivalTime, wait,
                       std::make_unique<Held>(std::move(session)).release(), end);
}

LockSession::LockSession(const std::string& soundModule)
    : sound_(SoundSource::Server, soundModule) {
    sound_.setChangeHandler([this] { tell(&LockSessionUser::serviceChanged); });
    sound_.setAvailabilityHandler([this] { tell(&LockSessionUser::volumesChanged); });
    sound_.setSilenceHandler([this] { tell(&LockSessionUser::silenceChanged); });
}

void LockSession::tell(void (LockSessionUser::*what)()) {
    const std::set<LockSessionUser*> users = users_;
    for (LockSessionUser* user : users)
        if (users_.contains(user)) (user->*what)();
}
