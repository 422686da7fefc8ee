#include "shells/common/FileFollower.hpp"

#include "config/WidgetIdentifier.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"

#include <utility>

namespace shell {
namespace {

using State = PropertyListFile::State;

bool saySame(const PropertyListFile& one, const PropertyListFile& other) {
    return one.state == other.state && one.value == other.value;
}

bool isGone(const PropertyListFile& now, const PropertyListFile& before) {
    return now.state == State::Missing && before.state != State::Missing;
}

}  // namespace

FileFollower::Contents FileFollower::contentsNow() {
    return {NSPropertyList::fileAt(settingsFilePath()), NSPropertyList::fileAt(categoryFilePath())};
}

void FileFollower::begin() {
    // A change that is still settling is compared with what the rows were assembled from before it.
    if (!settling_.isRunning()) shown_ = contentsNow();
    if (!watches_.empty()) return;
    isUnreadable_ = false;
    for (const std::string& path : {settingsFilePath(), categoryFilePath()})
        watches_.push_back(std::make_unique<glib::FileWatch>(
            resolvedPath(path),
            [this] { settling_.start(settlingSeconds, [this] { look(Missing::Doubted); }); },
            glib::FileWatch::Tell::EachChange));
}

void FileFollower::end() {
    watches_.clear();
    settling_.cancel();
}

void FileFollower::look(Missing missing) {
    Contents now = contentsNow();
    const auto tell = tell_;
    const bool isReadable =
        (now.settings.state == State::Missing || now.settings.value.dictionary()) &&
        (now.categories.state == State::Missing || now.categories.value.array());
    if (!isReadable) {
        isUnreadable_ = true;
        return tell(News::Unreadable);
    }
    const bool isAnyGone =
        isGone(now.settings, shown_.settings) || isGone(now.categories, shown_.categories);
    if (isAnyGone && missing == Missing::Doubted)
        return settling_.start(goneSeconds - settlingSeconds, [this] { look(Missing::Believed); });
    const bool isSame =
        saySame(now.settings, shown_.settings) && saySame(now.categories, shown_.categories);
    shown_ = std::move(now);
    if (std::exchange(isUnreadable_, false) || !isSame) tell(News::Changed);
}

}  // namespace shell
