#pragma once

#include "platform/celestial/SoundServer.hpp"
#include "platform/foundation/NSString.hpp"

#include <functional>
#include <string>
#include <utility>
#include <vector>

/// What a sound server has for rows beyond the device's own six categories: players, outputs,
/// inputs and roles, each with the category that a row for it is named by. It only reads: it sets
/// nothing, posts no notification, and can be used beside any AVSystemController of the process.
///
///     const auto inventory = shell::openSoundInventory(module, std::nullopt);
///     if (!inventory) return complain(inventory.error());
///     (*inventory)->setChangedHandler([&] { showAgain(); });
///
///     for (const SoundInventory::Item& item : inventory.items())
///         offer(item.name, item.iconName, item.category);
///     markRow("app:Firefox", inventory.isThere("app:Firefox"));
///
/// It begins in State::Connecting, reconnects whenever the connection ends, and never waits. Main
/// thread.
class SoundInventory {
 public:
    using State = SoundServer::State;
    enum class Kind {
        Application,  ///< "app:NAME": every program that plays or has played.
        Output,       ///< "sink:NAME": the devices that sound comes from, and followsOutput.
        Input,        ///< "source:NAME": the devices that record, and followsInput.
        Role,         ///< "role:NAME": a purpose that programs give their sound, such as "music".
    };
    /// These two categories stand for the device in use, whichever it is. Their items are always
    /// offered, before the other ones of their kind.
    static constexpr const char* followsOutput = "sink:@REAL@";
    static constexpr const char* followsInput = "source:@DEFAULT_SOURCE@";

    struct Item {
        Kind kind = Kind::Application;
        std::string category{};
        /// For people, in the server's words: the application's name, the device's description, or
        /// the description of a role's own output, else the role's word. For the two categories
        /// that follow the device in use, its description, and empty without one. One printable
        /// line.
        std::string name{};
        NSString iconName{};      ///< A freedesktop icon name; nil if the server tells none.
        bool isThereNow = false;  ///< As isThere(). An application that is not has played before.
        bool operator==(const Item&) const = default;
    };

    SoundInventory() = default;
    SoundInventory(const SoundInventory&) = delete;
    SoundInventory& operator=(const SoundInventory&) = delete;
    virtual ~SoundInventory() = default;

    virtual State state() const = 0;
    /// By kind; in each kind first what is there, then by name. Empty unless the state is Ready.
    /// Categories that cannot be written to a file are left out, and so are monitors of outputs,
    /// event sounds, this project's programs, and roles that a category of the six stands for. An
    /// application has one item, however many streams it plays. One that has played is known from
    /// this object's lifetime and from what the server stores for its next stream.
    virtual std::vector<Item> items() const = 0;
    /// Whether a row of the category would show a volume now, by the server's state alone: a mixer
    /// may also show an application's volume that the user set while it played. False unless the
    /// state is Ready.
    virtual bool isThere(const NSString& category) = 0;
    /// What a row of the category moves now: the description of its device or the name of its
    /// application; nil if it is not there, and for roles and conferences that have no output of
    /// their own.
    virtual NSString whatItMoves(const NSString& category) = 0;

    /// Called from the main loop when the state, the items, or an answer that was given by
    /// isThere() or whatItMoves() has changed. It may replace itself and destroy the inventory.
    void setChangedHandler(std::function<void()> handler) { changedHandler_ = std::move(handler); }

 protected:
    /// Touch no member afterwards.
    void tellChange() const {
        if (const auto handler = changedHandler_) handler();
    }

 private:
    std::function<void()> changedHandler_;
};
