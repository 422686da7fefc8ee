#include "backends/pulse/inventory/InventoryItems.hpp"

#include "backends/pulse/categories/CategoryMapping.hpp"
#include "backends/pulse/categories/Roles.hpp"
#include "backends/pulse/categories/StreamGroups.hpp"
#include "platform/foundation/PrintableText.hpp"

#include <algorithm>
#include <string_view>
#include <tuple>

namespace pulse {
namespace {

using Item = SoundInventory::Item;
using ItemKind = SoundInventory::Kind;

// What programs say that they play, in PulseAudio's words, besides what Ringtone and PhoneCall
// move.
constexpr const char* commonRoles[] = {"music", "video", "game", "alarm", "a11y"};

Player playerOf(const ServerMirror& mirror, const SinkInput& stream) {
    return {stream.applicationName, stream.applicationId, mirror.binaryOf(stream), stream.iconName};
}

// Event sounds are over before anybody could move them, and have a category of their own.
bool isOfPlayer(const SinkInput& stream) {
    return isUsersStream(stream) && !isSameRole(stream.role, "event") &&
           stream.applicationName != ourApplicationName;
}

NSString iconNamed(const std::string& name) {
    return name.empty() ? std::nullopt : NSString(name);
}

/// Collects items, each category once, and none that a category file could not hold.
class Collection {
 public:
    explicit Collection(const ServerMirror& mirror) : mirror_(mirror) {}

    void add(ItemKind kind, const std::string& category, const std::string& name,
             const NSString& iconName) {
        if (!isCategory(category) || printableLine(category) != category) return;
        items_.push_back({.kind = kind,
                          .category = category,
                          .name = printableLine(name),
                          .iconName = iconName,
                          .isThereNow = isReadable(mirror_, category)});
    }
    void addDevice(ItemKind kind, const std::string& category, const Device* device) {
        if (!device) return add(kind, category, "", std::nullopt);
        add(kind, category, device->description.empty() ? device->name : device->description,
            iconNamed(device->iconName));
    }
    std::vector<Item> sorted() &&;

 private:
    const ServerMirror& mirror_;
    std::vector<Item> items_;
};

std::vector<Item> Collection::sorted() && {
    const auto place = [](const Item& item) {
        const bool follows = item.category == SoundInventory::followsOutput ||
                             item.category == SoundInventory::followsInput;
        return std::tuple(item.kind, !follows, !item.isThereNow, lowered(item.name), item.category);
    };
    std::ranges::sort(items_, {}, place);
    return std::move(items_);
}

void addPlayers(Collection& collection, const ServerMirror& mirror, const SeenPlayers& players) {
    const std::vector<Player>& seen = players.all();
    const auto addPlayer = [&](const Player& player) {
        collection.add(ItemKind::Application, "app:" + player.label(), player.label(),
                       iconNamed(player.iconName));
    };
    std::ranges::for_each(seen, addPlayer);
    std::vector<Player> stored;
    const auto isKnown = [&](const std::string& name) {
        const auto isIt = [&](const Player& player) { return player.answersTo(name); };
        return isSameName(name, ourApplicationName) || std::ranges::any_of(seen, isIt) ||
               std::ranges::any_of(stored, isIt);
    };
    const auto addStored = [&](const std::string& name) {
        if (!isKnown(name)) stored.push_back({.name = name});
    };
    // Backwards, so that names come before ids: an application may have both.
    if (mirror.restoreEntries)
        for (auto entry = mirror.restoreEntries->rbegin(); entry != mirror.restoreEntries->rend();
             ++entry)
            if (const auto name = applicationOfEntry(entry->first)) addStored(*name);
    std::ranges::for_each(players.remembered(), addStored);
    std::ranges::for_each(stored, addPlayer);
}

void addDevices(Collection& collection, const ServerMirror& mirror) {
    collection.addDevice(ItemKind::Output, SoundInventory::followsOutput,
                         realSinkBehind(mirror, mirror.defaultSink()));
    for (const auto& [name, sink] : mirror.sinks)
        if (!isRoleSink(sink) && !isPlaceholder(name))
            collection.addDevice(ItemKind::Output, "sink:" + name, &sink);
    collection.addDevice(ItemKind::Input, SoundInventory::followsInput,
                         mirror.sourceNamed(mirror.server.defaultSourceName));
    for (const auto& [name, source] : mirror.sources)
        if (!source.isMonitor) collection.addDevice(ItemKind::Input, "source:" + name, &source);
}

// Without a device no role is readable, but it is still the same role.
VolumeObject objectOfRole(const ServerMirror& mirror, const std::string& role) {
    const auto object = objectForCategory(mirror, "role:" + role);
    return object.value_or(VolumeObject{VolumeObject::Kind::Role, std::string(streamRole(role))});
}

// The outputs of roles come first: their words are the session's own.
std::vector<std::string> rolesIn(const ServerMirror& mirror) {
    std::vector<std::string> roles;
    for (const auto& [name, sink] : mirror.sinks)
        if (isRoleSink(sink)) roles.emplace_back(roleInName(sink));
    roles.insert(roles.end(), std::begin(commonRoles), std::end(commonRoles));
    for (const SinkInput& stream : mirror.sinkInputs)
        if (isUsersStream(stream)) roles.push_back(stream.role);
    if (!mirror.restoreEntries) return roles;
    for (const auto& [entryName, entry] : *mirror.restoreEntries)
        if (const auto role = roleOfEntry(entryName); role && !isPlumbing({.role = *role}))
            roles.push_back(*role);
    return roles;
}

void addRoles(Collection& collection, const ServerMirror& mirror) {
    std::vector<VolumeObject> taken = {objectOfRole(mirror, "event"),
                                       objectOfRole(mirror, "phone")};
    for (const char* category :
         {AudioCategory::ringtone, AudioCategory::phoneCall, AudioCategory::audioVideo})
        if (const auto object = objectForCategory(mirror, category)) taken.push_back(*object);
    for (const std::string& role : rolesIn(mirror)) {
        const VolumeObject object = objectOfRole(mirror, role);
        const auto isSame = [&](const VolumeObject& other) {
            return other.kind == object.kind && isSameName(other.name, object.name);
        };
        if (role.empty() || std::ranges::any_of(taken, isSame)) continue;
        taken.push_back(object);
        const Device* const output =
            object.kind == VolumeObject::Kind::Sink ? mirror.sinkNamed(object.name) : nullptr;
        const bool isDescribed = output && !output->description.empty();
        collection.add(ItemKind::Role, "role:" + role, isDescribed ? output->description : role,
                       std::nullopt);
    }
}

NSString nameOf(const Device* device) {
    if (!device) return std::nullopt;
    return printableLine(device->description.empty() ? device->name : device->description);
}

NSString nameOfPlayer(const std::string& application, const SeenPlayers& seen) {
    const auto found = std::ranges::find_if(
        seen.all(), [&](const Player& player) { return player.answersTo(application); });
    return printableLine(found == seen.all().end() ? application : found->label());
}

}  // namespace

const std::string& Player::label() const {
    if (!name.empty()) return name;
    return binary.empty() ? id : binary;
}

bool Player::answersTo(const std::string& applicationName) const {
    return isSameName(name, applicationName) || isSameName(id, applicationName) ||
           isSameName(binary, applicationName);
}

void SeenPlayers::observe(const ServerMirror& mirror) {
    for (const SinkInput& stream : mirror.sinkInputs) {
        if (!isOfPlayer(stream)) continue;
        Player player = playerOf(mirror, stream);
        if (player.label().empty()) continue;
        const auto known = std::ranges::find_if(players_, [&](const Player& other) {
            return isSameName(other.label(), player.label());
        });
        if (known == players_.end())
            players_.push_back(std::move(player));
        else if (known->iconName.empty())
            known->iconName = player.iconName;
    }
}

bool isReadable(const ServerMirror& mirror, const NSString& category) {
    const auto object = objectForCategory(mirror, category);
    return object && levelOf(mirror, *object);
}

NSString whatItMoves(const ServerMirror& mirror, const NSString& category,
                     const SeenPlayers& seen) {
    const auto object = objectForCategory(mirror, category);
    if (!object || !levelOf(mirror, *object)) return std::nullopt;
    switch (object->kind) {
        case VolumeObject::Kind::Sink:
            return nameOf(mirror.sinkNamed(object->name));
        case VolumeObject::Kind::Source:
            return nameOf(mirror.sourceNamed(object->name));
        case VolumeObject::Kind::Application:
            return nameOfPlayer(object->name, seen);
        default:
            return std::nullopt;
    }
}

std::vector<Item> inventoryItems(const ServerMirror& mirror, const SeenPlayers& seen) {
    Collection collection(mirror);
    addPlayers(collection, mirror, seen);
    addDevices(collection, mirror);
    addRoles(collection, mirror);
    return std::move(collection).sorted();
}

}  // namespace pulse
