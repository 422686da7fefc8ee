#pragma once

#include "tests/desktop/UserSession.hpp"

#include <filesystem>
#include <string>
#include <vector>

namespace comparison {

/// Orca, the desktop's screen reader, with its speech written to a log.
class ScreenReader {
 public:
    /// Returns when it is ready.
    explicit ScreenReader(const test::UserSession& session);

    /// Waits until it is silent, and returns what it has said since the last call.
    std::vector<std::string> said();

 private:
    std::vector<std::string> allWords() const;

    std::filesystem::path words_;
    std::size_t heard_ = 0;
    test::ChildProcess process_;
};

}  // namespace comparison
