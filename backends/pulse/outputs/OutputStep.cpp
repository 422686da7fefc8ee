#include "backends/pulse/outputs/OutputStep.hpp"

namespace pulse {
namespace {

using Phase = OutputsJournal::Phase;

std::string nameOf(const Target& target) {
    return target.kind == Target::Kind::SinkInput
               ? "stream " + std::to_string(target.sinkInputIndex)
               : target.name;
}

std::string textOf(const pa_cvolume& volume) {
    return std::to_string(pa_cvolume_max(&volume));
}

const char* textOf(Mute mute) {
    return mute == Mute::On ? "on" : "off";
}

const char* textOf(Phase phase) {
    switch (phase) {
        case Phase::Down:
            return "down";
        case Phase::GoingUp:
            return "going up";
        case Phase::Returning:
            return "returning";
        case Phase::Up:
            return "up";
        case Phase::Turning:
            return "turning";
        case Phase::GoingDown:
            return "going down";
    }
    return "";
}

struct Describer {
    std::string operator()(const step::Remember& each) const {
        return std::string("remember: ") + textOf(each.journal.phase) + ", in front of " +
               each.journal.real;
    }
    std::string operator()(const step::Load& each) const {
        return "load " + each.sink->name() + " in front of " + each.real;
    }
    std::string operator()(const step::Wake& each) const { return "wake " + each.sink; }
    std::string operator()(const step::SetVolume& each) const {
        return "set " + nameOf(each.target) + " to " + textOf(each.volume);
    }
    std::string operator()(const step::SetMute& each) const {
        return "set the mute of " + nameOf(each.target) + " " + textOf(each.mute);
    }
    std::string operator()(const step::WriteEntry& each) const {
        return "set the entry of " + each.role + " to " + textOf(each.entry.volume) + ", mute " +
               textOf(each.entry.mute);
    }
    std::string operator()(const step::SetDefault& each) const {
        return "make " + each.sink + " the default";
    }
    std::string operator()(const step::Move& each) const {
        return "move stream " + std::to_string(each.sinkInputIndex) + " to " + each.sink;
    }
    std::string operator()(const step::Unload& each) const {
        return "unload module " + std::to_string(each.module);
    }
    std::string operator()(const step::AskForRouting& /*each*/) const {
        return "ask for the routing by roles";
    }
    std::string operator()(const step::Settle& /*each*/) const { return "wait for the links"; }
};

}  // namespace

std::string describe(const OutputStep& step) {
    return std::visit(Describer(), step);
}

}  // namespace pulse
