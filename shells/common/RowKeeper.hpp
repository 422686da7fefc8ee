#pragma once

#include "platform/foundation/NSNotificationCenter.hpp"
#include "platform/foundation/OneShotTimer.hpp"
#include "shells/common/VolumeRows.hpp"

#include <deque>
#include <functional>

namespace shell {

/// Keeps the rows of a mixer true where the mixer alone cannot: it follows notifications, leaves a
/// slider alone that the user holds, and shows what the user sets without asking what became of it.
/// So a slider that was let go, or was moved without being held, is compared with the volume that
/// the category has then. If that is another, it is announced once more; if there is none, all rows
/// are read again. They are never read while a finger holds one of them: that waits until it is
/// lifted. A row whose volume cannot be read is told to its slider.
///
/// Works for any widget: one with other sliders than a mixer's has nothing compared. Main thread.
class RowKeeper {
 public:
    /// `readRows` lets the widget read all its rows; it may follow other rows from inside.
    explicit RowKeeper(std::function<void()> readRows) : readRows_(std::move(readRows)) {}
    ~RowKeeper();
    RowKeeper(const RowKeeper&) = delete;
    RowKeeper& operator=(const RowKeeper&) = delete;

    /// From now on the sliders in that view, once a widget has assembled itself; nullptr for none.
    /// The same as before are only asked anew whether they can be read.
    void follow(const std::shared_ptr<UIView>& view);
    /// Volumes may be known, or not be known any more, without a notification.
    void readAgain();

    const std::vector<VolumeRow>& rows() const { return rows_; }

 private:
    class Observer : public NSObject {
     public:
        std::string_view className() const override { return "RowKeeperObserver"; }
    };

    void begin(const std::vector<std::shared_ptr<UISlider>>& sliders);
    void end();
    bool isAnyHeld() const;
    void moved(const std::shared_ptr<UISlider>& slider);
    void settleNext();
    void settle(const UISlider& slider);
    void volumeAnnounced(const NSNotification& notification);
    void tellWhetherKnown();

    std::function<void()> readRows_;
    std::shared_ptr<Observer> observer_;  ///< As long as the sliders are followed.
    std::vector<std::weak_ptr<UISlider>> sliders_;
    std::vector<VolumeRow> rows_;  ///< By category.
    std::deque<std::weak_ptr<UISlider>> moved_;
    bool isReadingPut_ = false;  ///< Off, until no slider is held.
    OneShotTimer settling_;
};

}  // namespace shell
