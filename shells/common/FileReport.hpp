#pragma once

#include "platform/foundation/NSString.hpp"

#include <functional>
#include <set>
#include <string>

namespace shell {

/// A shell's report on the mixer's two files: all problems line by line for standard error, and the
/// first ones for the panel.
///
///     FileReport files([](const std::string& line) { complain(line); });
///     files.refresh();
///     panel.setNotice(files.notice());
///
/// Main thread.
class FileReport {
 public:
    explicit FileReport(std::function<void(const std::string& line)> tell)
        : tell_(std::move(tell)) {}

    /// Checks both files, as each presentation reads them, and reports each problem that was not
    /// there the last time.
    void refresh();
    /// Checks both files while the rows on the screen are still those of the last presentation:
    /// only the notice is made anew.
    void refreshNotice();
    /// The panel's notice, in a few lines; nil for none.
    const NSString& notice() const { return notice_; }

 private:
    std::function<void(const std::string& line)> tell_;
    std::set<std::string> told_;
    NSString notice_;
};

/// Both notices, one below the other; nil if both are.
NSString joinedNotices(const NSString& above, const NSString& below);

}  // namespace shell
