#include "backends/pulse/BalanceMemory.hpp"

namespace pulse {

void BalanceMemory::observe(const Target& target, const pa_cvolume& reported) {
    Memory& memory = memories_[target];
    const bool ours = memory.written.channels > 0 && pa_cvolume_equal(&memory.written, &reported);
    if (!ours) memory.balance = reported;
}

pa_cvolume BalanceMemory::volumeAt(const Target& target, pa_volume_t loudest) {
    Memory& memory = memories_[target];
    memory.written = memory.balance;
    if (!pa_cvolume_valid(&memory.written)) pa_cvolume_set(&memory.written, 2, loudest);
    pa_cvolume_scale(&memory.written, loudest);
    return memory.written;
}

void BalanceMemory::forgetStreamsMissingIn(const ServerMirror& mirror) {
    std::erase_if(memories_, [&](const auto& each) {
        return each.first.kind == Target::Kind::Stream && !mirror.streamAt(each.first.streamIndex);
    });
}

}  // namespace pulse
