#pragma once

#include "platform/foundation/NSString.hpp"

#include <functional>
#include <set>
#include <string>

namespace shell {

/// What a shell tells its user of the mixer's two files: all of it, line by line, where the user
/// reads what programs say, and the beginning of it on the panel. Main thread.
class FileReport {
 public:
    explicit FileReport(std::function<void(const std::string& line)> tell)
        : tell_(std::move(tell)) {}

    /// Looks through both files, as they are read at each presentation, and tells each problem that
    /// was not there the last time.
    void refresh();
    /// For the panel, in a few lines; nil for none.
    const NSString& notice() const { return notice_; }

 private:
    std::function<void(const std::string& line)> tell_;
    std::set<std::string> told_;
    NSString notice_;
};

/// Both, one below the other; nil where both are.
NSString joinedNotices(const NSString& above, const NSString& below);

}  // namespace shell
