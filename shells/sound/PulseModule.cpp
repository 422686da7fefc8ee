#include "backends/pulse/PulseServer.hpp"
#include "shells/sound/SoundModule.hpp"

extern "C" {
void tarnwick_sound_server_open(const char* address, std::shared_ptr<SoundServer>& server) {
    server = pulse::connectToServer(address ? NSString(address) : std::nullopt);
}
void tarnwick_sound_inventory_open(const char* address,
                                   std::shared_ptr<SoundInventory>& inventory) {
    inventory = pulse::openInventory(address ? NSString(address) : std::nullopt);
}
}
