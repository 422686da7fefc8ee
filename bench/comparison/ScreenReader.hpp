#pragma once

#include "tests/desktop/UserSession.hpp"

#include <filesystem>
#include <string>
#include <vector>

namespace comparison {

/// The desktop's screen reader, Orca, with its words written down in place of being spoken.
class ScreenReader {
 public:
    /// Comes back when it reads.
    explicit ScreenReader(const test::UserSession& session);

    /// Waits until it says nothing more, and answers what it has said since the last time.
    std::vector<std::string> said();

 private:
    std::vector<std::string> allWords() const;

    std::filesystem::path words_;
    std::size_t heard_ = 0;
    rigs::ChildProcess process_;
};

}  // namespace comparison
