#pragma once

#include "platform/foundation/NSNotificationCenter.hpp"
#include "platform/foundation/NSRunLoop.hpp"
#include "platform/uikit/UISlider.hpp"

#include <deque>
#include <functional>
#include <memory>
#include <vector>

namespace shell {

/// One row of a mixer, as its host sees it.
struct VolumeRow {
    std::weak_ptr<UISlider> slider;
    NSString category;  ///< The volume service's name; nil where the list names none.
};

/// The widget's sliders that are rows of a mixer, by category, with their entries in the category
/// file, or in the default list if no file can be read. The file is read if there are sliders that
/// may be rows, so call this when the sliders are new. Main thread.
std::vector<VolumeRow> volumeRows(const std::vector<std::shared_ptr<UISlider>>& sliders);

/// Keeps a mixer's rows correct where the widget alone cannot: the widget follows notifications,
/// leaves a held slider alone, and does not check what became of a volume that it sent. So a slider
/// that was let go, or moved without being held, is compared with its category's volume. If they
/// differ, the volume is announced again; if the category has none, all rows are read again, once
/// no row is held. The keeper also tells a slider whether its row's volume can be read.
///
///     RowKeeper keeper([&] { sendUpdateValues(); });
///     keeper.follow(widgetView);
///
/// Works for any widget: sliders that are not a mixer's rows are left alone. Main thread.
class RowKeeper {
 public:
    /// `readRows` makes the widget read all its rows; it may call follow() from inside.
    explicit RowKeeper(std::function<void()> readRows) : readRows_(std::move(readRows)) {}
    ~RowKeeper();
    RowKeeper(const RowKeeper&) = delete;
    RowKeeper& operator=(const RowKeeper&) = delete;

    /// Follows the sliders in that view from now on; call when a widget has assembled itself.
    /// nullptr for none. For the same sliders it only checks again whether they can be read.
    void follow(const std::shared_ptr<UIView>& view);
    /// Reads the rows again: volumes may have become readable or unreadable without a notification.
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
    std::shared_ptr<Observer> observer_;  ///< Exists while sliders are followed.
    std::vector<std::weak_ptr<UISlider>> sliders_;
    std::vector<VolumeRow> rows_;  ///< By category.
    std::deque<std::weak_ptr<UISlider>> moved_;
    bool isReadingPostponed_ = false;  ///< Until no slider is held.
    OneShotTimer settling_;
};

}  // namespace shell
