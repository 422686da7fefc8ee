#include <dlfcn.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <thread>

// Preloaded into a sound server: sockets for Bluetooth voice, which the kernel has only with an
// adapter, are pairs of local ones. The far end, which would be the headset, throws away what it
// gets and sends silence.

namespace {

constexpr int bluetoothFamily = 31;
constexpr int voiceProtocol = 2;
constexpr int voiceOptions = 17;
constexpr int packetBytes = 48;
constexpr int packetMilliseconds = 3;
constexpr int noVoice = 0;
constexpr int connected = -1;

/// By a voice socket's descriptor its far end, until it is connected.
std::array<std::atomic<int>, 4096> farEnds;

std::atomic<int>* farEndOf(int descriptor) {
    const auto place = static_cast<std::size_t>(descriptor);
    return descriptor >= 0 && place < farEnds.size() ? &farEnds[place] : nullptr;
}

bool isVoice(int descriptor) {
    const auto* farEnd = farEndOf(descriptor);
    return farEnd && *farEnd != noVoice;
}

template <class Function>
Function* original(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

// False when the other side has closed.
bool throwAway(int descriptor) {
    std::array<char, 1024> bytes;
    ssize_t got = 0;
    while ((got = recv(descriptor, bytes.data(), bytes.size(), MSG_DONTWAIT)) > 0) {
    }
    return got < 0 && errno == EAGAIN;
}

void beHeadset(int descriptor) {
    const std::array<char, packetBytes> silence{};
    while (throwAway(descriptor)) {
        poll(nullptr, 0, packetMilliseconds);
        send(descriptor, silence.data(), silence.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
    }
    close(descriptor);
}

int voiceSocket(int type) {
    int ends[2];
    const int flags = type & (SOCK_NONBLOCK | SOCK_CLOEXEC);
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | flags, 0, ends) != 0) return -1;
    if (auto* farEnd = farEndOf(ends[0])) *farEnd = ends[1];
    return ends[0];
}

}  // namespace

extern "C" {

int socket(int family, int type, int protocol) noexcept {
    if (family == bluetoothFamily && protocol == voiceProtocol) return voiceSocket(type);
    const int descriptor = original<int(int, int, int)>("socket")(family, type, protocol);
    if (auto* farEnd = farEndOf(descriptor)) *farEnd = noVoice;
    return descriptor;
}

int connect(int descriptor, const sockaddr* address, socklen_t length) {
    if (!isVoice(descriptor))
        return original<int(int, const sockaddr*, socklen_t)>("connect")(descriptor, address,
                                                                         length);
    const int farEnd = farEndOf(descriptor)->exchange(connected);
    if (farEnd > 0) std::thread(beHeadset, farEnd).detach();
    return 0;
}

int bind(int descriptor, const sockaddr* address, socklen_t length) noexcept {
    if (isVoice(descriptor)) return 0;
    return original<int(int, const sockaddr*, socklen_t)>("bind")(descriptor, address, length);
}

int listen(int descriptor, int backlog) noexcept {
    if (isVoice(descriptor)) return 0;
    return original<int(int, int)>("listen")(descriptor, backlog);
}

// Servers ask for the packets' size and do without.
int getsockopt(int descriptor, int level, int option, void* value, socklen_t* length) noexcept {
    if (isVoice(descriptor) && level == voiceOptions) {
        errno = ENOPROTOOPT;
        return -1;
    }
    return original<int(int, int, int, void*, socklen_t*)>("getsockopt")(descriptor, level, option,
                                                                         value, length);
}
}
