#pragma once

#include "backends/glib/FileWatch.hpp"
#include "platform/foundation/NSPropertyList.hpp"
#include "platform/foundation/NSRunLoop.hpp"

#include <functional>
#include <memory>
#include <vector>

namespace shell {

/// Tells a shell when the mixer's two files no longer say what the rows on the screen were
/// assembled from, so that it can assemble them again.
///
///     FileFollower follower([&](FileFollower::News news) {
///         if (news == FileFollower::News::Changed) widget.assembleAgain();
///         showNotices();
///     });
///     widget.present();
///     follower.begin();
///
/// Wakes up only when a file changes, and waits until it has stayed the same for a moment: editors
/// write in several steps. Main thread.
class FileFollower {
 public:
    /// After the last change.
    static constexpr double settlingSeconds = 0.1;
    /// Some editors remove a file and write it anew, so one that is gone is believed in only then.
    static constexpr double goneSeconds = 2;

    enum class News {
        Changed,     ///< Both files can be read, or are missing for good, and say something else.
        Unreadable,  ///< One cannot be read, as while somebody edits it: the rows had better stay.
    };

    /// `tell` may end or destroy the follower.
    explicit FileFollower(std::function<void(News)> tell) : tell_(std::move(tell)) {}
    FileFollower(const FileFollower&) = delete;
    FileFollower& operator=(const FileFollower&) = delete;

    /// The rows have just been assembled.
    void begin();
    /// They are no longer shown.
    void end();

 private:
    enum class Missing { Doubted, Believed };
    /// What both files hold.
    struct Contents {
        PropertyListFile settings;
        PropertyListFile categories;
    };

    static Contents contentsNow();
    void look(Missing missing);

    std::function<void(News)> tell_;
    std::vector<std::unique_ptr<glib::FileWatch>> watches_;  ///< None while nothing is followed.
    Contents shown_;
    bool isUnreadable_ = false;  ///< Told and not mended yet.
    OneShotTimer settling_;
};

}  // namespace shell
