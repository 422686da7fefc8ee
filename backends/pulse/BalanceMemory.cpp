#include "backends/pulse/BalanceMemory.hpp"

namespace pulse {

void BalanceMemory::observe(const VolumeObject& object, const pa_cvolume& reported) {
    Memory& memory = memories_[object];
    const bool ours = memory.written.channels > 0 && pa_cvolume_equal(&memory.written, &reported);
    if (!ours) memory.balance = reported;
}

pa_cvolume BalanceMemory::volumeAt(const VolumeObject& object, pa_volume_t loudest) {
    Memory& memory = memories_[object];
    memory.written = memory.balance;
    if (!pa_cvolume_valid(&memory.written)) pa_cvolume_set(&memory.written, 2, loudest);
    pa_cvolume_scale(&memory.written, loudest);
    return memory.written;
}

}  // namespace pulse
