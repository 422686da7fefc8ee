#include "tests/rigs/UnixSocket.hpp"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <string>

namespace rigs {

bool takesConnections(const std::filesystem::path& socketFile) {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    socketFile.string().copy(static_cast<char*>(address.sun_path), sizeof address.sun_path - 1);
    const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool taken =
        connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    close(connection);
    return taken;
}

}  // namespace rigs
