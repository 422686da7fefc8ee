#include "backends/pulse/inventory/InventoryItems.hpp"
#include "backends/pulse/inventory/SessionManagerState.hpp"

#include <gtest/gtest.h>

// What a settings program offers for rows, and what it says of the rows that are there.

namespace {

using pulse::SeenPlayers;
using pulse::ServerMirror;
using Item = SoundInventory::Item;
using ItemKind = SoundInventory::Kind;

ServerMirror desktopMirror() {
    ServerMirror mirror;
    mirror.server.defaultSinkName = "spk";
    mirror.server.defaultSourceName = "mic";
    mirror.sinks["spk"] = {.name = "spk", .description = "Speakers", .iconName = "audio-card"};
    mirror.sinks["hp"] = {.name = "hp", .description = "Headphones"};
    mirror.sources["mic"] = {.name = "mic", .description = "Microphone"};
    mirror.sources["spk.monitor"] = {.name = "spk.monitor", .isMonitor = true};
    mirror.restoreEntries.emplace();
    return mirror;
}

std::vector<Item> itemsOfKind(const ServerMirror& mirror, ItemKind kind, SeenPlayers seen = {}) {
    seen.observe(mirror);
    std::vector<Item> found;
    for (const Item& item : inventoryItems(mirror, seen))
        if (item.kind == kind) found.push_back(item);
    return found;
}

std::vector<std::string> categoriesOf(const std::vector<Item>& items) {
    std::vector<std::string> categories;
    for (const Item& item : items)
        categories.push_back(item.category);
    return categories;
}

std::vector<std::string> offered(const ServerMirror& mirror, ItemKind kind,
                                 const SeenPlayers& seen = {}) {
    return categoriesOf(itemsOfKind(mirror, kind, seen));
}

using Names = std::vector<std::string>;

}  // namespace

TEST(InventoryItems, OfferAPlayerByItsNameAndIconOnceHoweverManyStreamsItPlays) {
    ServerMirror mirror = desktopMirror();
    mirror.sinkInputs = {{.applicationName = "Firefox", .binary = "firefox-bin"},
                         {.applicationName = "firefox", .iconName = "web-browser"}};
    EXPECT_EQ(itemsOfKind(mirror, ItemKind::Application),
              (std::vector<Item>{{.kind = ItemKind::Application,
                                  .category = "app:Firefox",
                                  .name = "Firefox",
                                  .iconName = "web-browser",
                                  .isThereNow = true}}));
}

TEST(InventoryItems, NameAPlayerWithoutANameByItsFileThenByItsId) {
    ServerMirror mirror = desktopMirror();
    mirror.clients[4] = {.binary = "mpv"};
    mirror.sinkInputs = {{.clientIndex = 4}, {.applicationId = "org.example.Radio"}, {}};
    EXPECT_EQ(offered(mirror, ItemKind::Application), (Names{"app:mpv", "app:org.example.Radio"}));
}

TEST(InventoryItems, LeaveOutEventSoundsPlumbingAndThisProject) {
    ServerMirror mirror = desktopMirror();
    mirror.sinkInputs = {{.role = "event", .applicationName = "Shell"},
                         {.role = "Notification", .applicationName = "Chat"},
                         {.applicationName = "Loop", .linkGroup = "loop"},
                         {.hasVolume = false, .applicationName = "Fixed"},
                         {.applicationName = "Tarnwick"}};
    mirror.restoreEntries->try_emplace("sink-input-by-application-name:Tarnwick");
    EXPECT_EQ(offered(mirror, ItemKind::Application), Names{});
}

TEST(InventoryItems, KeepWhatHasPlayedAfterWhatPlays) {
    ServerMirror mirror = desktopMirror();
    mirror.sinkInputs = {{.applicationName = "Ardour"}};
    SeenPlayers seen;
    seen.observe(mirror);
    mirror.sinkInputs = {{.applicationName = "Zoom"}, {.applicationName = "mpv"}};
    const auto items = itemsOfKind(mirror, ItemKind::Application, seen);
    EXPECT_EQ(categoriesOf(items), (Names{"app:mpv", "app:Zoom", "app:Ardour"}));
    EXPECT_TRUE(items[1].isThereNow);
    EXPECT_FALSE(items[2].isThereNow);
}

TEST(InventoryItems, KnowFromStoredEntriesWhatPlayedBefore) {
    ServerMirror mirror = desktopMirror();
    mirror.sinkInputs = {{.applicationName = "Firefox", .applicationId = "org.mozilla.firefox"}};
    for (const char* entry :
         {"sink-input-by-application-name:Spotify", "sink-input-by-application-id:org.radio",
          "sink-input-by-application-id:org.mozilla.firefox",
          "sink-input-by-application-name:firefox", "sink-input-by-application-id:spotify",
          "sink-input-by-media-name:A song", "sink-input-by-media-role:music",
          "sink-input-by-application-name:"})
        mirror.restoreEntries->try_emplace(entry);
    EXPECT_EQ(offered(mirror, ItemKind::Application),
              (Names{"app:Firefox", "app:org.radio", "app:Spotify"}));
}

TEST(InventoryItems, LeaveOutNamesThatACategoryFileCannotHold) {
    ServerMirror mirror = desktopMirror();
    mirror.sinkInputs = {{.applicationName = "two\nlines"}, {.applicationName = "\xff"}};
    mirror.restoreEntries->try_emplace("sink-input-by-application-name:bell\a");
    mirror.sinks["\xfe"] = {.name = "\xfe"};
    EXPECT_EQ(offered(mirror, ItemKind::Application), Names{});
    EXPECT_EQ(offered(mirror, ItemKind::Output), (Names{"sink:@REAL@", "sink:hp", "sink:spk"}));
}

TEST(InventoryItems, OfferDevicesByTheirDescriptionsAfterTheOneInUse) {
    const ServerMirror mirror = desktopMirror();
    EXPECT_EQ(itemsOfKind(mirror, ItemKind::Output),
              (std::vector<Item>{
                  {ItemKind::Output, "sink:@REAL@", "Speakers", "audio-card", true},
                  {ItemKind::Output, "sink:hp", "Headphones", std::nullopt, true},
                  {ItemKind::Output, "sink:spk", "Speakers", "audio-card", true},
              }));
    EXPECT_EQ(itemsOfKind(mirror, ItemKind::Input),
              (std::vector<Item>{
                  {ItemKind::Input, "source:@DEFAULT_SOURCE@", "Microphone", std::nullopt, true},
                  {ItemKind::Input, "source:mic", "Microphone", std::nullopt, true},
              }));
}

TEST(InventoryItems, NameADeviceWithoutADescriptionAsTheServerDoes) {
    ServerMirror mirror = desktopMirror();
    mirror.sinks["hp"].description = "";
    mirror.sinks["spk"].description = "two\nlines";
    const auto outputs = itemsOfKind(mirror, ItemKind::Output);
    EXPECT_EQ(outputs[1].name, "hp");
    EXPECT_EQ(outputs[2].name, "two lines");
}

TEST(InventoryItems, OfferWhatFollowsTheDeviceInUseAlsoWithoutADevice) {
    ServerMirror mirror;
    mirror.server.defaultSinkName = "auto_null";
    mirror.sinks["auto_null"] = {.name = "auto_null", .description = "Dummy Output"};
    EXPECT_EQ(itemsOfKind(mirror, ItemKind::Output),
              (std::vector<Item>{{ItemKind::Output, "sink:@REAL@", "", std::nullopt, false}}));
    EXPECT_EQ(offered(mirror, ItemKind::Input), Names{"source:@DEFAULT_SOURCE@"});
}

TEST(InventoryItems, OfferEffectsAsOutputsAndTheOutputsOfRolesAsRoles) {
    ServerMirror mirror = desktopMirror();
    mirror.sinks["effects"] = {
        .name = "effects", .description = "Equalizer", .masterDevice = "spk"};
    for (const char* role : {"multimedia", "notification", "navigation"}) {
        const std::string name = std::string("input.loopback.sink.role.") + role;
        mirror.sinks[name] = {.name = name, .masterDevice = "spk", .isOurOutput = true};
    }
    mirror.sinks["input.loopback.sink.role.navigation"].description = "Directions";
    EXPECT_EQ(offered(mirror, ItemKind::Output),
              (Names{"sink:@REAL@", "sink:effects", "sink:hp", "sink:spk"}));
    const auto roles = itemsOfKind(mirror, ItemKind::Role);
    EXPECT_EQ(categoriesOf(roles), (Names{"role:a11y", "role:alarm", "role:navigation", "role:game",
                                          "role:music", "role:video"}));
    EXPECT_EQ(roles[2].name, "Directions");
}

TEST(InventoryItems, OfferTheRolesThatAreCommonPlayedOrStoredOnceEach) {
    ServerMirror mirror = desktopMirror();
    mirror.sinkInputs = {{.role = "Movie"}, {.role = "production"}, {.role = "Loopback"}};
    for (const char* role : {"event", "phone", "Communication", "Music", "test", "filter"})
        mirror.restoreEntries->try_emplace(pulse::roleEntryName(role));
    EXPECT_EQ(offered(mirror, ItemKind::Role),
              (Names{"role:a11y", "role:alarm", "role:game", "role:music", "role:production",
                     "role:test", "role:video"}));
}

TEST(InventoryItems, LeaveOutTheRolesWhoseOutputACategoryOfTheSixMoves) {
    ServerMirror mirror = desktopMirror();
    mirror.sinks["input.loopback.sink.role.multimedia"] = {
        .name = "input.loopback.sink.role.multimedia", .intendedRoles = {"Music", "video", "game"}};
    EXPECT_EQ(offered(mirror, ItemKind::Role), (Names{"role:a11y", "role:alarm"}));
}

TEST(InventoryItems, AreReadableWhereARowWouldShowAVolume) {
    ServerMirror mirror = desktopMirror();
    mirror.sinkInputs = {{.applicationName = "Firefox", .binary = "firefox-bin"}};
    for (const char* category :
         {"Ringtone", "Audio/Video", "PhoneCall", "role:game", "sink:hp", "sink:@DEFAULT_SINK@",
          "sink:@REAL@", "source:spk.monitor", "source:@DEFAULT_SOURCE@", "app:FIREFOX-BIN"})
        EXPECT_TRUE(isReadable(mirror, category)) << category;
    for (const char* category : {"HeadsetBT", "HeadphonesBT", "VideoConference", "sink:gone",
                                 "source:gone", "app:Gone", "Speaker", "app:"})
        EXPECT_FALSE(isReadable(mirror, category)) << category;
    EXPECT_FALSE(isReadable(mirror, std::nullopt));
    mirror.restoreEntries->try_emplace(pulse::applicationEntryName("Gone"));
    EXPECT_FALSE(isReadable(mirror, "app:Gone"));
    mirror.restoreEntries.reset();
    EXPECT_FALSE(isReadable(mirror, "role:game"));
}

TEST(InventoryItems, SayWhatARowMoves) {
    ServerMirror mirror = desktopMirror();
    mirror.sinkInputs = {{.applicationName = "Firefox", .binary = "firefox-bin"}};
    SeenPlayers seen;
    seen.observe(mirror);
    const std::pair<const char*, NSString> expectations[] = {
        {"Audio/Video", "Speakers"},       {"sink:hp", "Headphones"},
        {"source:mic", "Microphone"},      {"source:spk.monitor", "spk.monitor"},
        {"app:firefox-bin", "Firefox"},    {"app:Gone", std::nullopt},
        {"sink:gone", std::nullopt},       {"Ringtone", std::nullopt},
        {"VideoConference", std::nullopt},
    };
    for (const auto& [category, moved] : expectations)
        EXPECT_EQ(whatItMoves(mirror, category, seen), moved) << category;
}

TEST(InventoryItems, OfferWhatTheSessionManagerRemembersOfPlayersOnce) {
    ServerMirror mirror = desktopMirror();
    mirror.sinkInputs = {{.applicationName = "Firefox", .applicationId = "org.mozilla.firefox"}};
    mirror.restoreEntries->try_emplace("sink-input-by-application-name:Music");
    SeenPlayers seen;
    seen.remember({"Radio", "firefox", "org.mozilla.firefox", "music", "Tarnwick"});
    EXPECT_EQ(offered(mirror, ItemKind::Application, seen),
              (Names{"app:Firefox", "app:Music", "app:Radio"}));
}

TEST(SessionManagerState, NamesEachApplicationOnceInTheOlderFormWithALineForEachProperty) {
    EXPECT_EQ(pulse::applicationsIn("[restore-stream]\n"
                                    "Output/Audio:application.name:My\\sRadio:volume=0.4\n"
                                    "Output/Audio:application.name:My\\sRadio:mute=false\n"
                                    "Output/Audio:application.id:org.example.Player:volume=1\n"
                                    "Input/Audio:application.name:Recorder:volume=1\n"
                                    "Output/Audio:media.role:Music:volume=1\n"
                                    "Output/Audio:application.name:A\\eB\\o1\\c\\\\:mute=true\n"),
              (Names{"My Radio", "org.example.Player", "A=B[1]\\"}));
}

TEST(SessionManagerState, NamesEachApplicationInTheNewerFormWithALineForEachStream) {
    EXPECT_EQ(pulse::applicationsIn(
                  "[stream-properties]\n"
                  "Output/Audio:application.name:Radio:One={\"volume\":1.0, \"mute\":false}\n"
                  "Output/Audio:media.role:Music={\"volume\":1.0}\n"),
              (Names{"Radio:One"}));
}

TEST(SessionManagerState, PassesOverWhatItDoesNotKnow) {
    for (const char* text :
         {"", "\n\n", "Output/Audio:application.name:", "Output/Audio:application.name:Cut",
          "Output/Audio:application.name:=", "Output/Audio:application.name:NoProperty=1",
          "Output/Audio:application.name:={}", "\xff\xfe"})
        EXPECT_EQ(pulse::applicationsIn(text), Names{}) << text;
    EXPECT_EQ(pulse::applicationsIn("Output/Audio:application.name:End\\={"), Names{"End\\"});
}
