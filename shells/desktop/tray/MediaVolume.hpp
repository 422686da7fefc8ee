#pragma once

#include "config/CategoryRecord.hpp"
#include "platform/foundation/NSObject.hpp"

#include <functional>
#include <memory>
#include <optional>
#include <string>

/// The volume of media, as something beside the mixer's rows shows and changes it. Goes through the
/// installed volume service, whose notification tells the rows. Main thread.
class MediaVolume {
 public:
    MediaVolume();
    ~MediaVolume();
    MediaVolume(const MediaVolume&) = delete;
    MediaVolume& operator=(const MediaVolume&) = delete;

    /// What its row is called: the user's own name for it, with the output behind it.
    std::string title() const;
    /// Reads that name anew, as the rows do each time the mixer opens.
    void readName();
    /// What is heard, 0 to 1; nullopt while it cannot be read.
    std::optional<float> fraction() const;
    /// Up or down, kept within 0 and 1; what is muted is heard again. Nothing while it cannot be
    /// read.
    void changeBy(float fraction);
    /// Mutes, and from there to where it was before; to the middle where that was no sound either.
    void toggleSilence();

    /// Called when the volume may be another one.
    void setChangeHandler(std::function<void()> handler) { changeHandler_ = std::move(handler); }

 private:
    CategoryRecord record_;
    std::shared_ptr<NSObject> observer_;
    std::function<void()> changeHandler_;
};
