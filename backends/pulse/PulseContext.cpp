#include "backends/pulse/PulseContext.hpp"

#include "backends/pulse/ServerAnswers.hpp"

#include <pulse/error.h>
#include <pulse/ext-stream-restore.h>
#include <pulse/introspect.h>
#include <pulse/subscribe.h>

#include <cstdlib>
#include <cstring>
#include <utility>

namespace pulse {
namespace {

struct Nothing {};

template <class Result>
Query<Result>& queryOf(void* userdata) {
    return *static_cast<Query<Result>*>(userdata);
}

// One item of a list, its end (above 0) or its failure (below).
template <class Result, class Info>
void gather(const Info* info, int end, void* userdata) {
    auto& query = queryOf<Result>(userdata);
    if (end < 0)
        query.fail();
    else if (end > 0)
        query.succeed();
    else if (info && info->name)
        query.result.insert_or_assign(info->name, copyOf(*info));
}

void acknowledged(pa_context*, int success, void* userdata) {
    auto& query = queryOf<Nothing>(userdata);
    if (success)
        query.succeed();
    else
        query.fail();
}

Query<Nothing>::Done whatever(PulseContext::Written written) {
    return [written = std::move(written)](std::optional<Nothing>) {
        if (written) written();
    };
}

// The library ends the program over a host's name that its resolver has no room for, so an
// address longer than any that leads somewhere is not given to it. None at all is fine.
bool isUsable(const char* address) {
    constexpr std::size_t longestBytes = 4096;
    return !address || std::strlen(address) <= longestBytes;
}

}  // namespace

PulseContext::PulseContext(pa_mainloop_api* api, const NSString& server, Handlers handlers)
    : handlers_(std::move(handlers)),
      context_(pa_context_new(api, "Tarnwick")),
      operations_([this] { failSoon(); }) {
    if (!context_) {
        failSoon();
        return;
    }
    pa_context_set_state_callback(
        context_.get(),
        [](pa_context*, void* self) { static_cast<PulseContext*>(self)->stateChanged(); }, this);
    const char* address = server ? server->c_str() : nullptr;
    // The server is the session's to start: one that we started would not have its settings.
    if (!isUsable(address ? address : std::getenv("PULSE_SERVER")) ||
        pa_context_connect(context_.get(), address, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0)
        failSoon();
}

PulseContext::~PulseContext() {
    if (!context_) return;
    pa_context_set_state_callback(context_.get(), nullptr, nullptr);
    pa_context_set_subscribe_callback(context_.get(), nullptr, nullptr);
    pa_ext_stream_restore_set_subscribe_cb(context_.get(), nullptr, nullptr);
    pa_context_disconnect(context_.get());
}

void PulseContext::stateChanged() {
    const pa_context_state_t state = pa_context_get_state(context_.get());
    if (state == PA_CONTEXT_READY) handlers_.ready();
    if (!PA_CONTEXT_IS_GOOD(state)) failSoon();
}

// Whoever hears of the failure drops the context, which can't be done from inside its callbacks.
void PulseContext::failSoon() {
    failure_.start(0, handlers_.failed);
}

void PulseContext::subscribe() {
    pa_context_set_subscribe_callback(
        context_.get(),
        [](pa_context*, pa_subscription_event_type_t event, uint32_t, void* self) {
            const auto facility = event & PA_SUBSCRIPTION_EVENT_FACILITY_MASK;
            const auto& changed = static_cast<PulseContext*>(self)->handlers_.changed;
            if (facility == PA_SUBSCRIPTION_EVENT_SERVER) changed(Part::Server);
            if (facility == PA_SUBSCRIPTION_EVENT_SINK) changed(Part::Sinks);
        },
        this);
    pa_ext_stream_restore_set_subscribe_cb(
        context_.get(),
        [](pa_context*, void* self) {
            static_cast<PulseContext*>(self)->handlers_.changed(Part::RoleEntries);
        },
        this);
    const auto mask = static_cast<pa_subscription_mask_t>(PA_SUBSCRIPTION_MASK_SERVER |
                                                          PA_SUBSCRIPTION_MASK_SINK);
    operations_.start<Nothing>(whatever({}), [&](void* userdata) {
        return pa_context_subscribe(context_.get(), mask, acknowledged, userdata);
    });
    operations_.start<Nothing>(whatever({}), [&](void* userdata) {
        return pa_ext_stream_restore_subscribe(context_.get(), 1, acknowledged, userdata);
    });
}

void PulseContext::readDefaultSinkName(Query<std::string>::Done done) {
    operations_.start<std::string>(std::move(done), [&](void* query) {
        return pa_context_get_server_info(
            context_.get(),
            [](pa_context*, const pa_server_info* info, void* userdata) {
                auto& answer = queryOf<std::string>(userdata);
                if (!info) return answer.fail();
                if (info->default_sink_name) answer.result = info->default_sink_name;
                answer.succeed();
            },
            query);
    });
}

void PulseContext::readSinks(Query<Sinks>::Done done) {
    operations_.start<Sinks>(std::move(done), [&](void* query) {
        return pa_context_get_sink_info_list(
            context_.get(),
            [](pa_context*, const pa_sink_info* info, int end, void* userdata) {
                gather<Sinks>(info, end, userdata);
            },
            query);
    });
}

void PulseContext::readRoleEntries(Query<RoleEntries>::Done done) {
    operations_.start<RoleEntries>(std::move(done), [&](void* query) {
        return pa_ext_stream_restore_read(
            context_.get(),
            [](pa_context*, const pa_ext_stream_restore_info* info, int end, void* userdata) {
                gather<RoleEntries>(info, end, userdata);
            },
            query);
    });
}

// The volume first: unmuting at the old one could be loud. Answers come in the order of the
// questions, so the last one's stands for all.
void PulseContext::writeSinkVolume(const std::string& name, Mute muteBefore,
                                   const pa_cvolume& volume, Written written) {
    const bool unmutes = muteBefore == Mute::On;
    operations_.start<Nothing>(whatever(unmutes ? Written() : written), [&](void* userdata) {
        return pa_context_set_sink_volume_by_name(context_.get(), name.c_str(), &volume,
                                                  acknowledged, userdata);
    });
    if (!unmutes) return;
    operations_.start<Nothing>(whatever(std::move(written)), [&](void* userdata) {
        return pa_context_set_sink_mute_by_name(context_.get(), name.c_str(), 0, acknowledged,
                                                userdata);
    });
}

void PulseContext::writeRoleVolume(const std::string& entryName, const std::string& device,
                                   const pa_cvolume& volume, Written written) {
    pa_ext_stream_restore_info entry{};
    entry.name = entryName.c_str();
    entry.device = device.empty() ? nullptr : device.c_str();
    entry.volume = volume;
    pa_channel_map_init_stereo(&entry.channel_map);
    operations_.start<Nothing>(whatever(std::move(written)), [&](void* userdata) {
        return pa_ext_stream_restore_write(context_.get(), PA_UPDATE_REPLACE, &entry, 1, 1,
                                           acknowledged, userdata);
    });
}

}  // namespace pulse
