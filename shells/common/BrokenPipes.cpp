#include "shells/common/BrokenPipes.hpp"

#include <csignal>

namespace shell {

void ignoreBrokenPipes() {
    std::signal(SIGPIPE, SIG_IGN);
}

}  // namespace shell
