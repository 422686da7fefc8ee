#pragma once

#include "backends/pulse/mirror/ServerMirror.hpp"
#include "platform/celestial/SoundInventory.hpp"

#include <string>
#include <utility>
#include <vector>

namespace pulse {

/// An application as its streams describe it. Members that the server does not tell are empty.
struct Player {
    std::string name{};
    std::string id{};
    std::string binary{};
    std::string iconName{};

    /// The NAME of the player's category "app:NAME": the first of its names that is not empty.
    const std::string& label() const;
    /// Whether "app:NAME" means this player.
    bool answersTo(const std::string& applicationName) const;
};

/// The players that have been seen, each once, and the names of those that played before. One that
/// stops playing stays.
class SeenPlayers {
 public:
    /// Takes the names for all that is known of the time before.
    void remember(std::vector<std::string> names) { remembered_ = std::move(names); }
    const std::vector<std::string>& remembered() const { return remembered_; }
    /// Adds the players whose streams are in the mirror.
    void observe(const ServerMirror& mirror);
    const std::vector<Player>& all() const { return players_; }

 private:
    std::vector<Player> players_;
    std::vector<std::string> remembered_;
};

/// Whether the mirror has a volume for the category.
bool isReadable(const ServerMirror& mirror, const NSString& category);
/// See SoundInventory::whatItMoves(). `seen` has names for the players in the mirror.
NSString whatItMoves(const ServerMirror& mirror, const NSString& category, const SeenPlayers& seen);
/// See SoundInventory::items(). `seen` includes the players in the mirror.
std::vector<SoundInventory::Item> inventoryItems(const ServerMirror& mirror,
                                                 const SeenPlayers& seen);

}  // namespace pulse
